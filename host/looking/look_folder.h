// The folder of a page to look at: its parts, how it is recognised, and making a new one.
#pragma once

#include <filesystem>
#include <optional>

#include "io/new_folder.h"
#include "looking/facts/page_facts.h"

namespace riders::looking {

inline constexpr const char *kPageName = "proof.html";
inline constexpr const char *kFilmsName = "films";
inline constexpr const char *kPicturesName = "pictures";
// The page that zooms, and its tiles.
inline constexpr const char *kLoupeName = "loupe.html";
inline constexpr const char *kTilesName = "loupe";

// A proof's folder while it is being made.
class LookFolder {
public:
    enum class Holds { pictures, picturesAndFilms };
    // Throws Refusal when the place is taken by anything that is not an
    // earlier proof or an empty folder, or when the folder cannot be made.
    explicit LookFolder(const std::filesystem::path &place, Holds holds = Holds::picturesAndFilms);

    const std::filesystem::path &path() const { return folder_->path(); }
    std::filesystem::path page() const { return path() / kPageName; }
    std::filesystem::path pictures() const { return path() / kPicturesName; }
    // Makes the folder for tiles. Throws Refusal, as the next does.
    void makeRoomForTiles() const;
    // The page, and the one that zooms where that was asked for.
    void writePages(const LookFacts &facts) const;
    // For files that are needed only until then.
    const std::filesystem::path &work() const { return folder_->work(); }
    // Moves the proof to its place; an earlier one is removed. Until then, the place is as it was. Throws
    // Refusal.
    void finish();

private:
    std::filesystem::path place_;
    std::optional<io::NewFolder> folder_;
};

// True when a folder holds a proof's page and nothing but the files to which it refers, none of them written to
// since.
bool isLookFolder(const std::filesystem::path &folder);

}  // namespace riders::looking
