// The folder of a proof: wholly new, or as it was.
#pragma once

#include <filesystem>

namespace riders::proof {

// Made beside where the proof is to be, filled, and moved there at the end.
class OutputFolder {
public:
    // Throws Refusal where the place is taken by anything that is not an
    // earlier proof or an empty folder, or where nothing can be made.
    explicit OutputFolder(const std::filesystem::path &place);
    // Takes everything away that was not moved.
    ~OutputFolder();
    OutputFolder(const OutputFolder &) = delete;

    // What is to be moved.
    const std::filesystem::path &path() const { return proof_; }
    // For what is needed in between only.
    const std::filesystem::path &work() const { return work_; }
    // Moves the proof to its place; an earlier one is then gone.
    void finish();

private:
    std::filesystem::path place_, outer_, proof_, work_;
};

// True where all the files in a folder are such as a proof has, and its page is one.
bool isProofFolder(const std::filesystem::path &folder);

// In the page of each proof.
inline constexpr const char *kProofMark = "<meta name=\"generator\" content=\"riders proof\">";
inline constexpr const char *kPageName = "proof.html";
inline constexpr const char *kFilmsName = "films";
inline constexpr const char *kPicturesName = "pictures";

}  // namespace riders::proof
