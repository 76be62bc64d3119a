// The page of a proof.
#pragma once

#include <filesystem>
#include <string>

#include "looking/facts/page_facts.h"

namespace riders::looking {

// Writes the page; the pictures and films it names lie beside it. Throws Refusal.
void writeReport(const std::filesystem::path &file, const LookFacts &facts);

// The same as text.
std::string reportOf(const LookFacts &facts);

// What is in every such page, within its first 1024 bytes.
std::string proofMark();

}  // namespace riders::looking
