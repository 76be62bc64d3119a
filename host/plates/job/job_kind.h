// What kind of job a file holds, by its first bytes.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "io/bytes.h"

namespace riders::plates {

inline constexpr size_t kJobHead = 1024;  // bytes that show its kind: a PDF may have others before it

enum class JobKind { postScript, eps, pdf };

// Throws Refusal for a file of any other kind, and for a riders file. An EPS in the binary wrapper that carries a
// preview counts as eps. `shown` is for messages, where that is not the file's path.
JobKind kindOfJob(const std::filesystem::path &job, const std::string &shown = {});

// The same from its first bytes, as many as headOf gives or the whole job; `name` is for the message.
JobKind kindOfHead(std::string_view head, const std::string &name);

// The first bytes of a job, as many as show its kind. Throws Refusal.
std::string headOf(const io::OpenFile &job);
// Whether it begins with the binary wrapper of an EPS.
bool isWrapped(std::string_view head);

}  // namespace riders::plates
