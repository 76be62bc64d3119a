// The pictures that are kept, and what is left for a person to look at when
// one of them is no longer what is shown.
#pragma once

#include <filesystem>
#include <string>

class KeptPictures {
public:
    // expected: where they lie; leavings: where the pictures of a failure go.
    KeptPictures(std::filesystem::path expected, std::filesystem::path leavings)
        : expected_(std::move(expected)), leavings_(std::move(leavings))
    {
    }

    // Compares the kept picture of that name with the PNG. Empty when they are
    // the same; otherwise what differs, in words, and NAME.expected.png,
    // NAME.actual.png and NAME.difference.png lie in the leavings. A picture
    // that is not kept is a difference; none is ever added here.
    std::string difference(const std::string &name, const std::filesystem::path &actual) const;

private:
    std::filesystem::path leaving(const std::string &name, const char *which) const;

    std::filesystem::path expected_, leavings_;
};
