// What is kept of a job from the moment at which it is accepted.
#pragma once

#include <ctime>
#include <string>
#include <string_view>

#include "printer/queues/choices.h"

namespace riders::printer {

enum class JobState {
    accepted,  // its films have to be made
    made,      // and are where they belong, or were printed
    held,      // made, and wait to be released
    failed,
    canceled
};

// A job is known by its queue and its number there.
struct JobKey {
    std::string queue;
    int number = 0;

    auto operator<=>(const JobKey &) const = default;
    // films-17
    std::string text() const { return queue + "-" + std::to_string(number); }
};

struct JobRecord {
    JobKey key = {};
    JobState state = JobState::accepted;
    std::string title = {}, user = {};
    std::string format = {};     // of the document, a MIME type
    std::string holdUntil = {};  // as its sender wanted it; empty: at once
    Choices choices = {};        // of the job itself
    std::string pages = {};      // as in 1,3-5; empty for all
    std::time_t accepted = 0, ended = 0;
    std::string message = {};  // what went wrong, or what was noticed
    std::string films = {};    // the folder with its films, once they are made
};

// One line for each member, in a form that recordFromText reads again.
std::string textOf(const JobRecord &record);
// Throws io::Refusal where the text is no record.
JobRecord recordFromText(std::string_view text);

std::string inWords(JobState state);

}  // namespace riders::printer
