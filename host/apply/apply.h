// Adding a riders file to a PostScript job, and taking it out again.
//
// Both throw Refusal for whatever is wrong, before anything is written: an
// output file is then as it was (or not there), and nothing has gone to
// standard output. Only when a disk fills or a reader goes away while bytes
// are being copied can standard output hold part of a job; a file never does.
// Memory: under 7 MiB whatever the size of the job.
// Where the file system lets files share blocks, the part of a large job behind the
// fragment is shared with the output: apply pads the fragment for that, and strip
// shares where what it takes out is as long as whole blocks.
#pragma once

#include <cstddef>
#include <filesystem>

namespace riders::apply {

// Where what was added, or taken out, begins in the job, and how long it is with its marker lines.
struct Fragment {
    std::size_t offset = 0, bytes = 0;
    std::size_t line = 1;  // from 1, where lines end in LF
};

struct ApplyRequest {
    std::filesystem::path riders;    // the riders file; empty: standard input
    std::filesystem::path job = {};  // empty: standard input
    std::filesystem::path out = {};  // empty: standard output; may be the job itself
    bool force = false;              // replace what is no PostScript job, too
};

// Writes the job with the riders file in it, between two marker lines, where
// job-wide setup belongs. Refused: a file that is not a riders file or is cut off, a job that
// is not PostScript, is a riders file or already has one in it, and an output that is some other file.
Fragment applyRiders(const ApplyRequest &request);

struct StripRequest {
    std::filesystem::path job = {};  // empty: standard input
    std::filesystem::path out = {};  // empty: standard output; may be the job itself
    bool force = false;              // replace what is no PostScript job, too
};

// Writes the job as it was before applyRiders, byte for byte. Refused: a job
// without a riders file, or one whose marker lines were changed or cut off, and an output that is some other file.
Fragment stripRiders(const StripRequest &request);

}  // namespace riders::apply
