// Reading the structuring comments of a PostScript job: where a setup fragment
// belongs, and where one of ours already is.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace riders::apply {

// A fragment stands in the first part of a job, the same from a file and a pipe.
inline constexpr size_t kJobHeadLimit = size_t(4) << 20;
// What is to be read of a job: a marker at the limit is then still seen whole.
inline constexpr size_t kJobHeadSize = kJobHeadLimit + 128;

struct JobHead {
    std::string_view bytes;
    bool whole = true;  // the bytes are the whole job
    std::string name;   // of the job, for messages
};

struct Place {
    size_t offset = 0;          // in the head; at the start of a line, or at the end of the job
    bool needsLineEnd = false;  // the line before it has none

    bool operator==(const Place &) const = default;
};

// Where job-wide setup belongs: at the end of the job's own setup section;
// else before the first page; else after the prolog; else after the header
// comments; else after the first line. Embedded documents and data sections
// are passed over. Throws Refusal where the job is no PostScript, where its
// first line does not end before the limit, or where it has a marked riders
// fragment already.
Place findPlace(const JobHead &head);

// Whether the job's header comments say that its pages are landscape. Throws
// Refusal where the job is no PostScript.
bool isLandscape(const JobHead &head);

// Offset of the opening marker of a riders fragment of the job's own (not of
// an embedded document's), if there is one. Throws Refusal where the job is no PostScript.
std::optional<size_t> findFragment(const JobHead &head);

}  // namespace riders::apply
