// Annotations and fonts of any bytes: what the plug-in makes of them prints as typed and does nothing else.
// RIDERS_HOSTILE=20000 RIDERS_HOSTILE_SEED=2 hostile_tests --gtest_filter='HostileText.*' tries more, or others.
#include <cstdlib>
#include <iostream>

#include "hostile/hostile_texts.h"
#include "hostile/watched_cases.h"
#include "source/ktAnnoDlg.h"
#include "source/making.h"

namespace {

constexpr size_t kAtATime = 250;

size_t numberFrom(const char *variable, size_t standard)
{
    const char *text = std::getenv(variable);
    return text ? std::strtoul(text, nullptr, 10) : standard;
}

void putBytes(unsigned char *pascalString, const std::string &bytes)
{
    pascalString[0] = static_cast<unsigned char>(bytes.size());
    std::copy(bytes.begin(), bytes.end(), pascalString + 1);
}

// The characters that are to be seen: control characters and blanks leave none.
std::string lettersOf(const std::string &roman)
{
    std::string letters;
    for (const char c : roman) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte > 32 && byte != 127 && byte != 0xCA)
            letters += c;
    }
    return toolbox::utf8FromRoman(letters);
}

std::string inTrace(const std::string &roman)
{
    return toolbox::trace::quoted(toolbox::utf8FromRoman(roman));
}

class HostileText : public Making {
protected:
    std::string ridersOf(const HostileAnnotation &annotation)
    {
        choose(&PrefsRec::annoItem, 2);
        putBytes(settings.annoText, annotation.text);
        putBytes(settings.annoSizeStr, annotation.size);
        putBytes(gFontNameStr, annotation.font);
        std::filesystem::remove(file());
        trace.clear();
        EXPECT_EQ(make(), 1);
        return contentsOf(file());
    }

    void tryOut(const std::vector<HostileAnnotation> &annotations)
    {
        std::vector<WatchedCase> cases;
        for (const HostileAnnotation &annotation : annotations)
            cases.push_back({ridersOf(annotation), annotation.font.substr(0, annotation.font.find(' ')),
                             annotation.text});
        const WatchedCases watched(cases);
        for (const std::string &finding : watched.findings())
            report(annotations, finding);
        for (size_t i = 0; i < annotations.size(); ++i)
            if (const std::string printed = watched.letters(i + 1), typed = lettersOf(annotations[i].text);
                printed != typed)
                report(annotations, std::to_string(i + 1) + " prints " + printed + " instead of " + typed);
    }

    void report(const std::vector<HostileAnnotation> &annotations, const std::string &finding)
    {
        const size_t number = std::strtoul(finding.c_str(), nullptr, 10);
        std::string of;
        if (number >= 1 && number <= annotations.size())
            of = "\ntext " + inTrace(annotations[number - 1].text) + "\nfont " +
                 inTrace(annotations[number - 1].font) + " size " + annotations[number - 1].size;
        ADD_FAILURE() << finding << of;
    }
};

TEST_F(HostileText, PrintsAsTypedAndDoesNothing)
{
    const size_t seed = numberFrom("RIDERS_HOSTILE_SEED", 1), count = numberFrom("RIDERS_HOSTILE", 400);
    std::cout << "seed " << seed << ", " << count << " annotations\n";
    HostileTexts texts(static_cast<unsigned>(seed));
    for (size_t done = 0; done < count && !HasFailure();) {
        std::vector<HostileAnnotation> annotations;
        for (; annotations.size() < kAtATime && done < count; ++done)
            annotations.push_back(texts.annotation());
        tryOut(annotations);
    }
}

}  // namespace
