// A printer that speaks IPP: the one that comes with CUPS.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "printing/own_cupsd.h"

namespace printing_tests {

class IppPrinter {
public:
    // Takes documents of those formats, and keeps them.
    explicit IppPrinter(const std::string &formats);
    ~IppPrinter();

    std::string uri() const;
    // The next document that it has received whole.
    std::filesystem::path document() const;

private:
    TemporaryFolder folder_;
    int port_, watch_;
    std::unique_ptr<Started> process_;
};

}  // namespace printing_tests
