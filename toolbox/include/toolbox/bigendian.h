// Field types for records whose bytes are fixed: big-endian whatever the
// processor, so that a record is the same in memory, in a file and across the
// boundary between host and plug-in.
#pragma once

#include <cstdint>
#include <type_traits>

// Reads and assigns like the integer T; holds its bytes most significant first.
// Alignment 1, so that fields lie at the offsets a format gives.
template <typename T>
struct BigEndian {
    unsigned char bytes[sizeof(T)];

    BigEndian() = default;
    BigEndian(T value) { *this = value; }

    BigEndian &operator=(T value)
    {
        auto bits = static_cast<std::make_unsigned_t<T>>(value);
        for (int i = static_cast<int>(sizeof(T)) - 1; i >= 0; --i) {
            bytes[i] = static_cast<unsigned char>(bits & 0xFF);
            bits = static_cast<std::make_unsigned_t<T>>(static_cast<std::uint64_t>(bits) >> 8);
        }
        return *this;
    }

    operator T() const
    {
        std::uint64_t bits = 0;
        for (unsigned char byte : bytes)
            bits = bits << 8 | byte;
        return static_cast<T>(bits);
    }
};

using BigInt16 = BigEndian<std::int16_t>;
using BigUInt16 = BigEndian<std::uint16_t>;
using BigInt32 = BigEndian<std::int32_t>;
using BigUInt32 = BigEndian<std::uint32_t>;

// A 32-bit big-endian address. What it points to must lie below 4 GiB.
struct BigPointer {
    BigUInt32 address;

    template <typename T>
    T *as() const { return reinterpret_cast<T *>(static_cast<std::uintptr_t>(static_cast<std::uint32_t>(address))); }

    template <typename T>
    void set(T *pointer) { address = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(pointer)); }
};

// Two coordinates as a Point stores them: vertical, then horizontal.
struct BigPoint {
    BigInt16 v;
    BigInt16 h;
};

// Four coordinates as a Rect stores them; a 'DLOG' and an 'ALRT' begin with one.
struct BigRect {
    BigInt16 top;
    BigInt16 left;
    BigInt16 bottom;
    BigInt16 right;
};

static_assert(sizeof(BigInt16) == 2 && alignof(BigInt16) == 1);
static_assert(sizeof(BigInt32) == 4 && alignof(BigInt32) == 1);
static_assert(sizeof(BigPointer) == 4 && sizeof(BigPoint) == 4 && sizeof(BigRect) == 8);
