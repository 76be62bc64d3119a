// Reading the structuring comments of a PostScript job: where a setup fragment
// belongs, and where there already is one.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace riders::apply {

// A fragment stands in the first part of a job, the same from a file and a pipe.
inline constexpr size_t kJobHeadLimit = size_t(4) << 20;
// How much of a job is read: a marker line at the limit is then still seen whole.
inline constexpr size_t kJobHeadSize = kJobHeadLimit + 128;

struct JobHead {
    std::string_view bytes;
    bool whole = true;     // the bytes are the whole job
    std::string name;      // of the job, for messages
    bool canGrow = false;  // there may be more bytes to look at; the job is then not whole
};

// Thrown where what is looked for may be in bytes that a head that can grow does not have yet.
struct HeadTooShort {};

struct Place {
    size_t offset = 0;          // in the head; at the start of a line, or at the end of the job
    bool needsLineEnd = false;  // the line before it has none

    bool operator==(const Place &) const = default;
};

// Where job-wide setup belongs: at the end of the job's own setup section;
// else before the first page; else after the prolog; else after the header
// comments; else after the first line. Embedded documents and data sections
// are skipped. Throws HeadTooShort; throws Refusal when the job is not PostScript, when its first
// line does not end before the limit, or when it already has a riders fragment.
Place findPlace(const JobHead &head);

// Whether the job's header comments say that its pages are landscape. Throws
// HeadTooShort, and Refusal when the job is not PostScript.
bool isLandscape(const JobHead &head);

// Offset of the opening marker line of the job's own riders fragment (not of an
// embedded document's), if it has one. Throws HeadTooShort, and Refusal when the job is not PostScript.
std::optional<size_t> findFragment(const JobHead &head);

}  // namespace riders::apply
