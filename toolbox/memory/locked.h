// Keeps a relocatable record in its place for as long as this object lives.
#pragma once

#include "toolbox/memory.h"

namespace toolbox {

// They may be nested: each restores the state it found.
template <typename Record>
class Locked {
public:
    explicit Locked(Record **handle)
        : handle_(reinterpret_cast<Handle>(handle)), state_(HGetState(handle_))
    {
        HLock(handle_);
    }
    ~Locked() { HSetState(handle_, state_); }
    Locked(const Locked &) = delete;
    Locked &operator=(const Locked &) = delete;

    Record *operator->() const { return reinterpret_cast<Record *>(*handle_); }
    Record &operator*() const { return *reinterpret_cast<Record *>(*handle_); }

private:
    Handle handle_;
    int8_t state_;
};

}  // namespace toolbox
