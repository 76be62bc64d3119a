// `riders proof`: the plates of a job as an imagesetter would make them, what
// is measured on them, and a page to look at.
#pragma once

#include <filesystem>
#include <string>

namespace riders::proof {

struct ProofRequest {
    std::filesystem::path job;          // PostScript, EPS or PDF, told by its first bytes
    std::filesystem::path riders = {};  // added to the job first; empty for none
    std::filesystem::path folder = {};  // where the proof goes; empty: the job's name and -proof, here
    std::string pages = {};             // as in 1,3-5; empty for all
    int dpi = 1200;                     // kLeastProofDpi to kMostProofDpi
    int secondsAPage = 300;             // the interpreter is ended when a page takes longer
    int megabytes = 2048;               // of memory, for each interpreter
    int cores = 0;                      // interpreters and threads at a time; 0: as many as there are cores
};

inline constexpr int kLeastProofDpi = 72;
inline constexpr int kMostProofDpi = 4800;

// Writes the proof folder and answers the path of its page. The folder appears
// when all is done; an earlier proof there is then replaced as a whole. Throws
// Refusal where the job, the riders file, the pages or the folder will not do,
// and where the interpreter fails, which is told with the page and its words.
// Whatever happens, nothing else is left on the disk, except when the process
// is killed outright. SIGINT, SIGTERM and SIGHUP end the work, throw Interrupted, and
// are for the caller to act on. Not to be called twice at a time.
std::filesystem::path proof(const ProofRequest &request);

}  // namespace riders::proof
