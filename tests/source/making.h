// Makes a riders file from the settings dialog's popups in a folder of its own, and
// finds out what was reported and which files there are.
#pragma once

#include "source/open_settings.h"
#include "toolbox/files.h"

extern const std::string kOldContents;

class Making : public OpenSettings {
protected:
    void SetUp() override;

    // Makes file(), dismissing that many reports.
    int16_t make(int expectedReports = 0);
    // Chooses something in all six popups.
    void chooseEverything();
    // What the file must then hold, composed of the pieces' sources. The frequency is
    // 35, the angle 45, the flatness 1 if one is chosen.
    std::string expected() const;

    std::filesystem::path out() const { return folder / "out"; }
    std::filesystem::path file() const { return out() / "made"; }
    // Writes an earlier file(), of another creator.
    void writeOld();
    // The names in out(), companions aside.
    std::vector<std::string> files() const;
    FInfo info() const;
    // Number and context of each report: "-34 (create)".
    std::vector<std::string> reports() const;
};
