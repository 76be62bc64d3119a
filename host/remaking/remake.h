// A riders file made anew: with the choices that are in it, or with others that a person makes in the settings
// dialog, which opens on them.
#pragma once

#include <filesystem>

#include "keeping/keeper.h"
#include "reading/choices.h"
#include "reading/written.h"
#include "remaking/dialog_values.h"

namespace riders::remaking {

struct ReadRiders {
    std::filesystem::path file;
    reading::Written written;
    reading::Choices choices;
};

// Throws io::Refusal where it cannot be read, or is no riders file.
ReadRiders readRiders(const std::filesystem::path &file);

// Writes what could be read as this version writes it; what else is in the file is lost. The file is then wholly
// new or as it was. Throws io::Refusal.
void makeAgain(const ReadRiders &riders);

// The values with which the settings dialog would open. The plug-in must have been started.
class Change {
public:
    Change(const plugin::Plugin &plugin, ReadRiders riders);

    const ReadRiders &riders() const { return riders_; }
    // What the dialog cannot hold, in words.
    const std::vector<std::string> &leftOut() const { return values_.leftOut; }
    // Opens it. What is made there keeps the screens of single plates; the keeper puts it in place, and says where
    // it cannot. The user's saved settings stay as they are.
    void run(keeping::Keeper &keeper) const;

private:
    void keepPlates(const std::filesystem::path &made) const;

    ReadRiders riders_;
    DialogValues values_;
};

}  // namespace riders::remaking
