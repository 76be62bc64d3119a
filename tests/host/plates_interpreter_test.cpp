// Reading what the interpreter writes about a job's screens.
#include <gtest/gtest.h>

#include <sstream>

#include "meter/spots.h"
#include "plates/interpreter/interpreter_words.h"

namespace {

// The order of a spot function's values is what counts, and a job may write anything.
TEST(InterpreterWords, ShapesAreRecognisedByTheirValues)
{
    const auto shapeOf = [](double (*spot)(double, double)) {
        std::ostringstream line;
        line << "%%ProofShape";
        for (int i = 0; i < 49; ++i)
            line << ' ' << spot((i % 7 - 3) / 3.3, (i / 7 - 3) / 3.5);
        line << " Cyan";
        riders::plates::InterpreterWords words;
        words.take("%%ProofPage");
        words.take(line.str());
        words.take("%%ProofPage");
        return words.report().pages[0].at("Cyan").shape;
    };
    for (const auto *known : {&riders::meter::namedSpots(), &riders::meter::rarerSpots()})
        for (const riders::meter::NamedSpot &spot : *known)
            EXPECT_EQ(shapeOf(spot.value), spot.name);
    EXPECT_EQ(shapeOf([](double x, double y) { return -5 * (x * x + y * y); }), "Round");
    EXPECT_EQ(shapeOf([](double x, double y) { return x * y; }), "");
    riders::plates::InterpreterWords words;
    for (const char *line : {"%%ProofShape ", "%%ProofShape 1 2 3 Cyan", "%%ProofShape x"})
        EXPECT_FALSE(words.take(line));
    EXPECT_TRUE(words.report().said.empty());
}

// A page whose procedures have ended is still being written until the next one begins.
TEST(InterpreterWords, APageIsInWorkUntilItIsWritten)
{
    riders::plates::InterpreterWords words;
    words.take("%%ProofPage");  // before the job
    words.take("%%ProofBegin");
    EXPECT_FALSE(words.isWritingPage());
    words.take("%%ProofSize 1200 900");
    words.take("%%ProofPage");
    EXPECT_TRUE(words.isWritingPage());
    words.take("%%ProofBegin");
    EXPECT_FALSE(words.isWritingPage());
    words.take("%%ProofPage");
    words.take("%%ProofPage");  // of a job that hides where pages begin
    EXPECT_FALSE(words.isWritingPage());
    ASSERT_EQ(words.report().sizes.size(), 3u);
    EXPECT_EQ(words.report().sizes[0].columns, 1200);
    EXPECT_EQ(words.report().sizes[0].rows, 900);
    EXPECT_EQ(words.report().sizes[1].rows, 0);
}

TEST(InterpreterWords, WhatAJobWritesTakesLittleMemory)
{
    riders::plates::InterpreterWords words("secret");
    for (int i = 0; i < 5000; ++i) {
        const std::string number = std::to_string(i);
        EXPECT_FALSE(words.take("%%ProofPage"));
        words.take("%%ProofScreen 60 45 Ink " + number);
        words.take("%%ProofsecretScreen 60 45 Ink " + number);
        words.take("%%SeparationName: Ink " + number + " CMYK = [ 0 0 0 0 ]");
        words.take(std::string(50000, 'x'));
    }
    EXPECT_FALSE(words.take("%%ProofsecretPage"));
    EXPECT_TRUE(words.take("%%ProofsecretPage"));
    const riders::plates::InterpreterReport &report = words.report();
    EXPECT_EQ(report.pages.size(), 1u);
    EXPECT_EQ(report.atStart.size(), 200u);
    EXPECT_EQ(report.inks.size(), 200u);
    EXPECT_EQ(report.said.size(), 100u);
    for (const std::string &line : report.said)
        EXPECT_LE(line.size(), 1000u);
}

}  // namespace
