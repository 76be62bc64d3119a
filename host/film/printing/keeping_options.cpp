#include "film/printing/keeping_options.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "io/refusal.h"

namespace riders::printing {
namespace {

// What an option must be. `keep` is empty where it must not be given at all.
struct Rule {
    const char *name, *keep, *why;
};

constexpr const char *kResized = "it would resize the plates, and with them their dots";
constexpr const char *kTurned =
    "it would move the plates' pixels; turn or mirror films with --rotate and --emulsion";
constexpr const char *kTones = "it would change tones, and a film has only black and white";
constexpr const char *kSide = "plates are printed on one side";

constexpr std::array kRules = {
    Rule{"number-up", "1", kResized},
    Rule{"print-scaling", "none", kResized},
    Rule{"fit-to-page", "false", kResized},
    Rule{"sides", "one-sided", kSide},
    Rule{"Duplex", "None", kSide},
    Rule{"fitplot", "", kResized},
    Rule{"scaling", "", kResized},
    Rule{"natural-scaling", "", kResized},
    Rule{"ppi", "", kResized},
    Rule{"mirror", "false", kTurned},
    Rule{"landscape", "false", kTurned},
    Rule{"orientation-requested", "3", kTurned},
    Rule{"position", "", kTurned},
    Rule{"gamma", "", kTones},
    Rule{"brightness", "", kTones},
    Rule{"saturation", "", kTones},
    Rule{"hue", "", kTones},
    Rule{"number-up-layout", "", kResized},
    Rule{"page-border", "none", "it would draw on the films"},
    Rule{"page-ranges", "", "say which pages with --pages"},
    Rule{"page-set", "all", "say which pages with --pages"},
    Rule{"copies", "1", "say how many with --copies"},
    Rule{"Resolution", "", "say it with --dpi"},
    Rule{"printer-resolution", "", "say it with --dpi"},
    Rule{"PageSize", "", "say it with --media"},
    Rule{"PageRegion", "", "say it with --media"},
    Rule{"media", "", "say it with --media"},
    Rule{"media-col", "", "say it with --media"},
    Rule{"ColorModel", "", "a film has only black and white"},
    Rule{"print-color-mode", "", "a film has only black and white"},
    Rule{"document-format", "", "it follows from what the queue takes"},
    Rule{"raw", "", "the printer's driver would be left out"},
};
// The first of the rules are sent, whatever the queue; the others only say what cannot be asked for.
constexpr std::size_t kAlwaysSent = 4;

// What Gutenprint is sent. Measured with its drivers for Epson: with any other of its ways to dither a few pixels
// are lost or added, and with its own choice of one, too.
constexpr std::array kGutenprint = {
    Rule{"StpDitherAlgorithm", "Ordered", "only this way to dither keeps each pixel"},
    Rule{"StpiShrinkOutput", "Crop", kResized},
    Rule{"StpFullBleed", "False", kResized},
    Rule{"StpColorPrecision", "Normal", kTones},
};
// What may be chosen there: it moves the head, not the dots.
constexpr std::array<std::string_view, 6> kFree = {"StpPrintingDirection", "StpWeave",       "StpPlatenGap",
                                                   "StpBandEnhancement",   "StpPrintMethod", "StpPrintSpeed"};

[[noreturn]] void refuse(const Queue &queue, const JobOption &asked, const char *why)
{
    throw io::Refusal("-O " + asked.name + "=" + asked.value + ": " + queue.name +
                      " is not asked for that: " + why);
}

template <std::size_t N>
const Rule *ruleFor(const std::array<Rule, N> &rules, std::string_view name)
{
    const auto found =
        std::find_if(rules.begin(), rules.end(), [&](const Rule &rule) { return sameName(rule.name, name); });
    return found == rules.end() ? nullptr : &*found;
}

bool begins(std::string_view name, std::string_view with)
{
    return sameName(name.substr(0, with.size()), with);
}

bool isFree(std::string_view name)
{
    return std::any_of(kFree.begin(), kFree.end(), [&](std::string_view free) { return sameName(free, name); });
}

bool hasChoice(const QueueOption &option, std::string_view choice)
{
    return std::any_of(option.choices.begin(), option.choices.end(),
                       [&](const std::string &one) { return sameName(one, choice); });
}

// Density, gamma, balance and the like, dozens of them, are None unless somebody has chosen otherwise.
void checkGutenprint(const Queue &queue, const JobOption &asked)
{
    if (const Rule *rule = ruleFor(kGutenprint, asked.name)) {
        if (!sameValue(asked.value, rule->keep))
            refuse(queue, asked, rule->why);
        return;
    }
    if (!begins(asked.name, "Stp") || isFree(asked.name) || sameValue(asked.value, "None"))
        return;
    const auto known = queue.options.find(asked.name);
    const bool inks = sameName(asked.name, "StpInkSet");
    if (inks && asked.value.find("tone") == asked.value.npos)
        return;
    if (inks || known == queue.options.end() || hasChoice(known->second, "None"))
        refuse(queue, asked, inks ? "it would divide black among several inks" : kTones);
}

void addGutenprint(const Queue &queue, std::vector<JobOption> &options)
{
    for (const Rule &rule : kGutenprint)
        if (queue.options.count(rule.name))
            options.push_back({rule.name, rule.keep});
    for (const auto &[name, option] : queue.options)
        if (begins(name, "Stp") && !isFree(name) && !ruleFor(kGutenprint, name) && hasChoice(option, "None") &&
            !sameName(option.chosen, "None"))
            options.push_back({name, "None"});
}

void check(const Queue &queue, const JobOption &asked)
{
    if (const Rule *rule = ruleFor(kRules, asked.name))
        if (!*rule->keep || !sameValue(asked.value, rule->keep))
            refuse(queue, asked, rule->why);
    if (queue.isGutenprint())
        checkGutenprint(queue, asked);
    const auto known = queue.options.find(asked.name);
    if (known == queue.options.end() || hasChoice(known->second, asked.value) || begins(asked.value, "Custom."))
        return;
    std::string choices;
    for (const std::string &choice : known->second.choices)
        choices += (choices.empty() ? "" : ", ") + choice;
    throw io::Refusal("-O " + asked.name + "=" + asked.value + ": " + queue.name + " has no such choice, but " +
                      choices);
}

void put(std::vector<JobOption> &options, const JobOption &option)
{
    for (JobOption &there : options)
        if (sameName(there.name, option.name)) {
            there.value = option.value;
            return;
        }
    options.push_back(option);
}

bool spoils(const Queue &queue, const JobOption &option)
{
    try {
        check(queue, option);
        return false;
    } catch (const io::Refusal &) {
        return true;
    }
}

}  // namespace

std::vector<JobOption> keepingOptions(const Queue &queue, const std::vector<JobOption> &asked)
{
    std::vector<JobOption> options = {{"job-sheets", "none"}, {"job-hold-until", "no-hold"}};
    for (std::size_t i = 0; i < kAlwaysSent; ++i)
        options.push_back({kRules[i].name, kRules[i].keep});
    if (queue.options.count("Duplex") && hasChoice(queue.options.at("Duplex"), "None"))
        options.push_back({"Duplex", "None"});
    if (queue.isGutenprint())
        addGutenprint(queue, options);
    // What the user has chosen for all jobs of the queue, as far as it does no harm.
    for (const JobOption &saved : queue.saved)
        if (queue.options.count(saved.name) && !valueOf(options, saved.name) && !spoils(queue, saved))
            put(options, saved);
    for (const JobOption &option : asked) {
        check(queue, option);
        put(options, option);
    }
    return options;
}

}  // namespace riders::printing
