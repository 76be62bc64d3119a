// Forms in which all plates are pages of one file.
#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <utility>

#include "film/forms/plate_writer.h"
#include "io/output.h"

namespace riders::film {

// Plates are open side by side, but follow each other in the file: each is first written to a file of its own, and
// added when all that come before it have been.
class OneFileForm : public Form {
public:
    std::unique_ptr<PlateWriter> plate(const PlateSheet &sheet) final;
    // Throws Refusal where there is no plate.
    void finish() final;

protected:
    // Files of plates are made in `work`; an empty path for the file is standard output. Throws Refusal.
    OneFileForm(const std::filesystem::path &file, std::filesystem::path work);

    const io::OpenFile &out() const { return output_.file(); }
    // Writes a plate to sheet.file.
    virtual std::unique_ptr<PlateWriter> spool(const PlateSheet &sheet) = 0;
    // Adds that file to what there is in out(). Called for one plate at a time, in their order.
    virtual void add(const PlateSheet &sheet) = 0;
    // Writes what comes after the last plate.
    virtual void addEnd() = 0;

private:
    enum class State { open, whole, givenUp };
    struct Plate {
        PlateSheet sheet;
        State state = State::open;
    };
    class Spooled;

    void settle(Plate &plate, State state);

    const std::filesystem::path work_;
    io::Output output_;
    std::mutex mutex_;
    std::map<std::pair<int, std::size_t>, Plate>
        plates_;  // by page and place; not those that are added or given up
    std::size_t begun_ = 0;
    bool any_ = false, failed_ = false;
};

}  // namespace riders::film
