#include "commands/known_words.h"

#include <exception>
#include <new>

#include "commands/known_sets.h"
#include "film/printing/ask_queue.h"
#include "io/refusal.h"
#include "make/offers.h"
#include "plugin/plugin.h"
#include "screens/screen_set.h"
#include "screens/set_file.h"
#include "screens/shapes.h"

namespace riders::commands {
namespace {

using describing::Candidate;

std::vector<Candidate> shapes()
{
    std::vector<Candidate> words;
    for (const screens::Shape &shape : screens::installedShapes())
        for (const std::string &name : screens::namesOf(shape))
            words.push_back({name, screens::aboutShape(shape)});
    return words;
}

std::vector<Candidate> sets()
{
    std::vector<Candidate> words;
    for (const auto &[name, file] : screens::setFiles(setFolders()))
        try {
            words.push_back({name, screens::setFromFile(file).name});
        } catch (const io::Refusal &) {
            words.push_back({name, {}});
        }
    return words;
}

std::vector<Candidate> plates()
{
    std::vector<Candidate> words;
    for (const char *ink : {"Cyan", "Magenta", "Yellow", "Black"})
        words.push_back({std::string(ink) + ":", "a process ink"});
    return words;
}

std::vector<Candidate> queues()
{
    std::vector<Candidate> words;
    for (const printing::QueueName &queue : printing::queueNames(printing::PrintServer()))
        words.push_back({queue.name, queue.model});
    return words;
}

template <make::Offered menu>
std::vector<Candidate> offered()
{
    std::vector<Candidate> words;
    for (const std::string &value : make::offersOf(menu, plugin::pluginBesideProgram()))
        words.push_back({value, {}});
    return words;
}

// Nobody is there to be told what is wrong: the line is not finished yet.
describing::KnownWords words(const char *of, std::vector<Candidate> (*list)())
{
    return {of, [list]() -> std::vector<Candidate> {
                try {
                    return list();
                } catch (const std::bad_alloc &) {
                    throw;
                } catch (const std::exception &) {
                }
                return {};
            }};
}

}  // namespace

std::vector<describing::KnownWords> knownWords()
{
    using make::Offered;
    return {words("shapes", shapes),
            words("sets", sets),
            words("plates", plates),
            words("queues", queues),
            words("fonts", offered<Offered::fonts>),
            words("sizes", offered<Offered::sizes>),
            words("frequencies", offered<Offered::frequencies>),
            words("angles", offered<Offered::angles>),
            words("flatnesses", offered<Offered::flatnesses>)};
}

}  // namespace riders::commands
