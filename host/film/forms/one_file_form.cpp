#include "film/forms/one_file_form.h"

#include <string>
#include <system_error>
#include <utility>

#include "io/refusal.h"

namespace fs = std::filesystem;

namespace riders::film {

class OneFileForm::Spooled : public PlateWriter {
public:
    Spooled(OneFileForm &form, Plate &plate, std::unique_ptr<PlateWriter> writer)
        : form_(form), plate_(plate), writer_(std::move(writer))
    {
    }

    Spooled(const Spooled &) = delete;
    Spooled &operator=(const Spooled &) = delete;
    ~Spooled() override
    {
        if (!writer_)
            return;
        writer_.reset();
        try {
            form_.settle(plate_, State::givenUp);
        } catch (...) {  // NOLINT(bugprone-empty-catch): the form knows, and finish() says it
        }
    }

    void row(const std::uint8_t *bits) override { writer_->row(bits); }

    void end() override
    {
        writer_->end();
        writer_.reset();
        form_.settle(plate_, State::whole);
    }

private:
    OneFileForm &form_;
    Plate &plate_;
    std::unique_ptr<PlateWriter> writer_;
};

OneFileForm::OneFileForm(const fs::path &file, fs::path work) : work_(std::move(work)), output_(file)
{
}

std::unique_ptr<PlateWriter> OneFileForm::plate(const PlateSheet &sheet)
{
    const std::lock_guard lock(mutex_);
    Plate plate{.sheet = sheet};
    plate.sheet.file = work_ / ("plate-" + std::to_string(begun_++));
    std::unique_ptr<PlateWriter> writer = spool(plate.sheet);
    Plate &kept = plates_.insert_or_assign({sheet.page, sheet.place}, std::move(plate)).first->second;
    return std::make_unique<Spooled>(*this, kept, std::move(writer));
}

// Adds what can be added now that one more plate is at its end.
void OneFileForm::settle(Plate &plate, State state)
{
    const std::lock_guard lock(mutex_);
    plate.state = state;
    while (!plates_.empty() && plates_.begin()->second.state != State::open) {
        const Plate next = std::move(plates_.extract(plates_.begin()).mapped());
        if (next.state == State::givenUp || failed_)
            continue;
        failed_ = true;  // unless it goes well
        add(next.sheet);
        failed_ = false;
        any_ = true;
        std::error_code ignored;
        fs::remove(next.sheet.file, ignored);
    }
}

void OneFileForm::finish()
{
    const std::lock_guard lock(mutex_);
    if (failed_)
        throw io::Refusal(out().name() + ": a plate could not be written");
    if (!any_)
        throw io::Refusal(out().name() + ": there is no plate to write");
    addEnd();
    output_.finish();
}

}  // namespace riders::film
