// Bytes that a test writes as hexadecimal digits.
#pragma once

#include <string>

// Anything but digits between them is skipped.
std::string fromHex(const std::string &hex);
