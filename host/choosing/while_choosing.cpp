#include "choosing/while_choosing.h"

#include <cmath>

#include "io/refusal.h"
#include "plugin/dialog_filter.h"
#include "screens/number_text.h"
#include "toolbox/host/opened_file.h"
#include "toolbox/host/text.h"
#include "toolbox/host/trace.h"
#include "toolbox/resources.h"

namespace riders::choosing {
namespace {

constexpr int16_t kStringList = 1030;
enum Words { kScreen = 1, kReached, kNothing, kNotKnown, kAsOnFilm, kExample, kLines, kDegrees };
// In place of what is left to the printer, as on films.
constexpr double kUsualFrequency = 60, kUsualAngle = 45;
constexpr const char *kUsualShape = "Round";

std::string rounded(double value)
{
    return screens::numberText(std::round(value * 100) / 100);
}

// What the sample became, or why there is none.
struct Outcome {
    std::optional<Sample> sample;
    std::string problem;
};

Outcome outcomeOf(const SampleWanted &wanted, io::Beside &unwanted)
{
    try {
        return {sampleOf(wanted, unwanted), {}};
    } catch (const io::Refusal &refusal) {
        return {{}, refusal.message};
    } catch (const std::exception &error) {
        return {{}, error.what()};
    }
}

SampleWanted wantedFor(const ChosenScreen &screen, int dpi)
{
    return {screen.frequency.value_or(kUsualFrequency), screen.angle.value_or(kUsualAngle),
            screen.kind == ChosenScreen::Shape::printers ? kUsualShape : screen.shape, screen.file, dpi};
}

}  // namespace

WhileChoosing::WhileChoosing(const Surroundings &surroundings)
    : surroundings_(surroundings), before_(toolbox::lastOpenedFile().path)
{
    plugin::setDialogWatcher([this](DialogPtr dialog) { watch(dialog); });
}

WhileChoosing::~WhileChoosing()
{
    plugin::setDialogWatcher({});
}

std::string WhileChoosing::words(int number, const std::vector<std::string> &parts) const
{
    const int16_t inUse = CurResFile();
    UseResFile(surroundings_.resources);
    Str255 text;
    GetIndString(text, kStringList, static_cast<int16_t>(number));
    UseResFile(inUse);
    std::string all = toolbox::utf8FromPascal(text);
    for (std::size_t i = 0; i < parts.size(); ++i)
        if (const std::size_t at = all.find("^" + std::to_string(i)); at != all.npos)
            all.replace(at, 2, parts[i]);
    return all;
}

void WhileChoosing::watch(DialogPtr dialog)
{
    if (!reader_) {
        reader_.emplace(dialog);
        const int16_t inUse = CurResFile();
        UseResFile(surroundings_.resources);
        window_.emplace(dialog);
        UseResFile(inUse);
    }
    rememberFile();
    window_->follow();
    if (const ShownChoice shown = reader_->shown(); shown.complete() && shown != shown_) {
        shown_ = shown;
        choose(screenOf(shown, printersOwnShape(), *surroundings_.files));
    }
    if (surroundings_.waits)
        work_.wait();
    work_.takeResult();
}

void WhileChoosing::rememberFile()
{
    const toolbox::OpenedFile &opened = toolbox::lastOpenedFile();
    if (opened.path.empty() || opened.path == before_)
        return;
    before_ = opened.path;
    surroundings_.files->push_back({opened.name, opened.path});
}

void WhileChoosing::choose(const ChosenScreen &screen)
{
    work_.stop();
    chosen_ = screen;
    if (screen.nothing())
        return showNone(words(kNothing));
    if (screen.kind == ChosenScreen::Shape::unknown)
        return showNone(words(kNotKnown));
    work_.begin([this, wanted = wantedFor(screen, surroundings_.dpi)](io::Beside &unwanted) {
        const auto outcome = std::make_shared<Outcome>(outcomeOf(wanted, unwanted));
        return [this, outcome] {
            if (outcome->sample)
                showDots(*outcome->sample);
            else
                showNone(outcome->problem);
        };
    });
}

std::string WhileChoosing::screenInWords() const
{
    const SampleWanted wanted = wantedFor(chosen_, surroundings_.dpi);
    return words(kScreen, {screens::numberText(wanted.frequency), screens::numberText(wanted.angle)});
}

// What is left to the printer, and shown all the same.
std::string WhileChoosing::assumed() const
{
    std::string parts;
    const auto add = [&](const std::string &part) { parts += (parts.empty() ? "" : ", ") + part; };
    if (!chosen_.frequency)
        add(words(kLines, {screens::numberText(kUsualFrequency)}));
    if (!chosen_.angle)
        add(words(kDegrees, {screens::numberText(kUsualAngle)}));
    if (chosen_.kind == ChosenScreen::Shape::printers)
        add(kUsualShape);
    return parts.empty() ? words(kAsOnFilm) : words(kExample, {parts});
}

void WhileChoosing::traceDots(const std::string &became) const
{
    toolbox::trace::line("dots of %s %s %s: %s", toolbox::trace::quoted(shown_.frequency).c_str(),
                         toolbox::trace::quoted(shown_.angle).c_str(),
                         toolbox::trace::quoted(shown_.shape).c_str(), became.c_str());
}

void WhileChoosing::showDots(const Sample &sample)
{
    const std::string dpi = std::to_string(surroundings_.dpi), frequency = rounded(sample.frequency),
                      angle = rounded(sample.angle);
    std::string became = frequency + " lpi " + angle + " degrees at " + dpi + " dpi, inked";
    for (const double inked : sample.inked)
        became += " " + rounded(inked);
    traceDots(became);
    window_->show({wantedFor(chosen_, 0).shape, screenInWords(), words(kReached, {dpi, frequency, angle})},
                  assumed(), sample);
}

void WhileChoosing::showNone(const std::string &why)
{
    traceDots("none, " + why);
    window_->show({chosen_.nothing() ? "" : shown_.shape}, why, {});
}

}  // namespace riders::choosing
