#include "commands/mesh_command.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>

#include "commands/standard_output.h"
#include "io/decimal.h"
#include "io/json.h"
#include "screens/mesh.h"
#include "screens/number_text.h"

namespace riders::commands {

using io::decimal;

namespace {

struct MeshRequest {
    std::string frequency, threads;  // as typed; one of them may be empty
    double angle = screens::kMeshAngle;
    bool json = false;
};

// A screen and a mesh.
struct Pair {
    screens::Grid screen;
    double threads = 0;  // per inch
};

std::string perCentimetre(double perInch)
{
    return decimal(perInch * 10 / screens::kMillimetresPerInch, 1);
}

// Those that the line not given could have.
std::vector<Pair> pairsOf(const MeshRequest &request)
{
    const std::optional<double> frequency = screens::perInchFromText(request.frequency);
    const std::optional<double> threads = screens::perInchFromText(request.threads);
    std::vector<Pair> pairs;
    if (frequency && threads)
        pairs.push_back({{*frequency, request.angle}, *threads});
    else if (frequency)
        for (const double mesh : screens::meshesFor(*frequency))
            pairs.push_back({{*frequency, request.angle}, mesh});
    else if (threads)
        for (const double lines : screens::frequenciesFor(*threads))
            pairs.push_back({{lines, request.angle}, *threads});
    return pairs;
}

// A range lets what is not a number through.
std::string isNumber(const std::string &text)
{
    return std::isfinite(std::strtod(text.c_str(), nullptr)) ? std::string() : text + " is not a number";
}

std::string inJson(const Pair &pair)
{
    const screens::OnMesh mesh = screens::onMesh(pair.screen, pair.threads);
    std::vector<std::string> doubts;
    for (const std::string &doubt : screens::doubtsOf(pair.screen, pair.threads))
        doubts.push_back(io::jsonText(doubt));
    return io::jsonObject(
        {{"frequency", io::jsonNumber(pair.screen.frequency)},
         {"angle", io::jsonNumber(pair.screen.angle)},
         {"threads", io::jsonNumber(pair.threads)},
         {"ratio", io::jsonNumber(mesh.ratio)},
         {"advice", io::jsonText(screens::adviceFor(mesh))},
         {"patternMillimetres", mesh.coarsest ? io::jsonNumber(mesh.coarsest->millimetres()) : "null"},
         {"patternMayBeSeen", mesh.most && mesh.most->canBeSeen() ? "true" : "false"},
         {"doubts", io::jsonArray(doubts)}});
}

std::string rowOf(const Pair &pair)
{
    const screens::OnMesh mesh = screens::onMesh(pair.screen, pair.threads);
    std::array<char, 40> coarsest{"-"};
    if (mesh.coarsest)
        std::snprintf(coarsest.data(), coarsest.size(), "%.2f", mesh.coarsest->millimetres());
    char numbers[100];
    std::snprintf(numbers, sizeof numbers, "%7s %9s %7s %8.2f %10s  ", decimal(pair.screen.frequency, 1).c_str(),
                  decimal(pair.threads, 1).c_str(), perCentimetre(pair.threads).c_str(), mesh.ratio,
                  coarsest.data());
    std::string row = numbers + screens::adviceFor(mesh);
    for (const std::string &doubt : screens::doubtsOf(pair.screen, pair.threads))
        row += "; " + doubt;
    return row + "\n";
}

std::string inWords(const std::vector<Pair> &pairs, const MeshRequest &request)
{
    std::string text = "Screen at " + decimal(request.angle, 2) + "°, threads at 0 and 90°.\n\n";
    text += "  lines   threads  per cm   a line pattern mm  advice\n";
    for (const Pair &pair : pairs)
        text += rowOf(pair);
    return text + "\nPer inch where nothing else is said. Threads a line: " + decimal(screens::kLeastRatio, 2) +
           " at the least, " + decimal(screens::kUsualRatio, 2) + " as usually advised, " +
           decimal(screens::kFineRatio, 2) +
           " for fine work.\n"
           "The pattern is the coarsest that the waves of screen and threads make. Weave, stencil and ink count\n"
           "as well, and nobody can promise what will be seen: try it.\n";
}

std::string run(const MeshRequest &request)
{
    const std::vector<Pair> pairs = pairsOf(request);
    if (request.json) {
        std::vector<std::string> values;
        for (const Pair &pair : pairs)
            values.push_back(inJson(pair));
        return printLines(io::jsonArray(values) + "\n");
    }
    if (pairs.empty())
        return "there is no usual " + std::string(request.threads.empty() ? "mesh" : "frequency") +
               " with 2 to 6 threads a line; say both --frequency and --threads";
    return printLines(inWords(pairs, request));
}

}  // namespace

CLI::Validator perInchBetween(double least, double most, const std::string &what)
{
    return {[=](std::string &text) {
                const std::optional<double> number = screens::perInchFromText(text);
                if (!number)
                    return text + " is not a number of " + what +
                           (what == "lines" ? ", per inch as 45, or 18/cm" : ", per inch as 225, or 90/cm");
                return *number >= least && *number <= most ? std::string()
                                                           : text + " is not from " + decimal(least, 0) + " to " +
                                                                 decimal(most, 0) + " " + what + " per inch";
            },
            ""};
}

void addMesh(CLI::App &app, Chosen &chosen)
{
    const auto request = std::make_shared<MeshRequest>();
    CLI::App *command =
        app.add_subcommand("mesh", "Say which printing mesh suits a screen, or which screen a mesh");
    command->add_option("--frequency", request->frequency, "The screen's lines per inch, or N/cm")
        ->check(perInchBetween(screens::kLeastMeshScreen, screens::kMostMeshScreen, "lines"))
        ->type_name("LPI");
    command->add_option("--threads", request->threads, "The mesh's threads per inch, or N/cm")
        ->check(perInchBetween(screens::kLeastThreads, screens::kMostThreads, "threads"))
        ->type_name("N");
    command
        ->add_option("--angle", request->angle, "The screen's angle to the threads, degrees; 22.5 when left out")
        ->transform(CLI::Validator(
            [](std::string &text) {
                text = screens::withPeriod(text);
                return std::string();
            },
            ""))
        ->check(CLI::Range(-360.0, 360.0) & CLI::Validator([](std::string &text) { return isNumber(text); }, ""))
        ->type_name("DEG");
    command->add_flag("--json", request->json, "For programs");
    command->callback([request, &chosen] {
        if (request->frequency.empty() && request->threads.empty())
            throw CLI::RequiredError("--frequency, --threads or both are required", CLI::ExitCodes::RequiredError);
        chosen.name = "riders mesh";
        chosen.run = [request] { return run(*request); };
    });
}

}  // namespace riders::commands
