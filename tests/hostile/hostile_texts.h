// Texts that try to get out of where a riders file holds them.
#pragma once

#include <random>
#include <string>

struct HostileAnnotation {
    std::string text;  // 255 bytes at most, of any value
    std::string font;  // 63 at most; of half of them the interpreter's own
    std::string size;
};

// The same ones for the same seed.
class HostileTexts {
public:
    explicit HostileTexts(unsigned seed) : random_(seed) {}
    HostileAnnotation annotation();
    // The body of a dot shape. Nothing in it lasts for ever.
    std::string shape();

private:
    size_t below(size_t count) { return random_() % count; }
    std::string text(size_t most);
    std::string ofBytes(size_t length);
    std::string ofOne(size_t length);
    std::string ofWords(size_t most);
    std::string nearlyTheMark(size_t most);

    std::mt19937 random_;
};
