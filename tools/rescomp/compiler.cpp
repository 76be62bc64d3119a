#include "compiler.h"

#include <algorithm>
#include <functional>

#include "cursor.h"
#include "emitters.h"
#include "toolbox/resources.h"

namespace rescomp {
namespace {

struct Statement {
    std::string_view word;
    std::uint32_t type;   // 0: the statement names it
    std::uint8_t attributes;
    std::string (*bytes)(Cursor &, std::int16_t id);
};

template <std::string (*bytes)(Cursor &)>
std::string withoutId(Cursor &source, std::int16_t)
{
    return bytes(source);
}

constexpr Statement statements[] = {
    {"string", 'STR ', resPurgeable, withoutId<stringBytes>},
    {"strings", 'STR#', resPurgeable, withoutId<stringListBytes>},
    {"menu", 'MENU', 0, menuBytes},
    {"dialog", 'DLOG', resPurgeable, dialogBytes},
    {"alert", 'ALRT', resPurgeable, alertBytes},
    {"items", 'DITL', resPurgeable, withoutId<itemListBytes>},
    {"text", 'TEXT', resPurgeable, withoutId<wholeFile>},
    {"version", 'vers', resPurgeable, withoutId<versionBytes>},
    {"picture", 'PICT', resPurgeable, withoutId<pictureBytes>},
    {"sound", 'snd ', resPurgeable, withoutId<soundBytes>},
    {"colors", 0, resPurgeable, withoutId<colorTableBytes>},
    {"data", 0, resPurgeable, withoutId<wholeFile>},
    {"hex", 0, resPurgeable, withoutId<hexBytes>},
};

// The sources being read, the including ones first.
using Chain = std::vector<std::filesystem::path>;

void readOptions(Cursor &source, Compiled &resource)
{
    auto set = [&](int bit) { resource.attributes |= static_cast<std::uint8_t>(bit); };
    for (;;) {
        if (source.accept("named"))
            resource.name = source.singleText();   // the resource's own text may follow
        else if (source.accept("purgeable"))
            set(resPurgeable);
        else if (source.accept("fixed"))
            resource.attributes &= static_cast<std::uint8_t>(~resPurgeable);
        else if (source.accept("locked"))
            set(resLocked);
        else if (source.accept("preload"))
            set(resPreload);
        else
            return;
    }
}

void readType(Cursor &source, const Statement &statement, Compiled &resource)
{
    resource.type = statement.type;
    if (resource.type)
        return;
    Place place = source.place();
    resource.type = source.type();
    constexpr std::uint32_t colorTables[] = {'dctb', 'cctb', 'wctb', 'actb'};
    if (statement.word == "colors" &&
        std::find(std::begin(colorTables), std::end(colorTables), resource.type) == std::end(colorTables))
        throw SourceError(place, "a colour table is 'dctb', 'cctb', 'wctb' or 'actb'");
}

void readResource(Cursor &source, const Statement &statement, Resources &resources)
{
    Place place = source.place();
    source.word("a statement");
    Compiled resource;
    readType(source, statement, resource);
    resource.id = source.id();
    resource.attributes = statement.attributes;
    readOptions(source, resource);
    resource.data = statement.bytes(source, resource.id);
    resources.add(std::move(resource), place);
}

void readSource(const std::filesystem::path &path, const Place &from, Chain &chain, Resources &resources);

void readInclude(Cursor &source, Chain &chain, Resources &resources)
{
    Place place = source.place();
    source.word("include");
    readSource(source.besideSource(source.text("a file's name")), place, chain, resources);
}

void readStatement(Cursor &source, Chain &chain, Resources &resources)
{
    if (source.atWord("include"))
        return readInclude(source, chain, resources);
    for (const Statement &statement : statements)
        if (source.atWord(statement.word))
            return readResource(source, statement, resources);
    std::string words = "include";
    for (const Statement &statement : statements)
        words += ", " + std::string(statement.word);
    source.wrong("expected one of " + words);
}

void readStatements(Cursor source, Chain &chain, Resources &resources)
{
    for (source.skipSeparators(); !source.atEnd(); source.skipSeparators()) {
        readStatement(source, chain, resources);
        source.endStatement();
    }
}

void readSource(const std::filesystem::path &path, const Place &from, Chain &chain, Resources &resources)
{
    std::filesystem::path plain = std::filesystem::weakly_canonical(path);
    if (std::find(chain.begin(), chain.end(), plain) != chain.end())
        throw SourceError(from, "\"" + path.string() + "\" includes itself");
    chain.push_back(plain);
    readStatements(Cursor(path.string(), fileBytes(path, from)), chain, resources);
    chain.pop_back();
}

}  // namespace

Resources compile(const std::filesystem::path &source)
{
    Resources resources;
    Chain chain;
    readSource(source, {source.string(), 1}, chain, resources);
    return resources;
}

Resources compileText(const std::string &name, const std::string &utf8)
{
    Resources resources;
    Chain chain;
    readStatements(Cursor(name, utf8), chain, resources);
    return resources;
}

}  // namespace rescomp
