// For the tests of apply and strip: a folder with a riders file and a job, and
// both commands in a separate process with pipes.
#pragma once

#include <functional>
#include <string>

#include "apply/apply.h"
#include "io/refusal.h"
#include "support/toolbox_test.h"

struct Piped {
    int exitCode = -1;  // 0, or 1 after a Refusal
    std::string output, message;
};
// Runs `work` in a child with `input` coming through a pipe and its output going through one.
Piped runPiped(const std::string &input, const std::function<void()> &work);
// Runs `work` in a child with the given descriptors as its standard input and output.
Piped runOn(int in, int out, const std::function<void()> &work);

class ApplyTest : public ::testing::Test {
protected:
    void SetUp() override;

    // The message of the Refusal, or "done".
    std::string apply(const std::filesystem::path &out);
    std::string strip(const std::filesystem::path &job, const std::filesystem::path &out);
    // What apply and strip make of these bytes.
    std::string applied(const std::string &jobBytes);
    std::string stripped(const std::string &appliedBytes);
    size_t filesInFolder() const;

    TemporaryFolder folder;
    std::filesystem::path riders = folder / "my riders", job = folder / "job.ps", out = folder / "out.ps";
    std::string fragment = "%!Zu3_Riders\n/x 1 def\n%Zu3_RidersEnd\n";
    std::string plainJob = "%!PS\n%%EndComments\nshowpage\n";
    std::string landscapeJob = "%!PS\n%%Orientation: Landscape\n%%EndComments\nshowpage\n";
};
