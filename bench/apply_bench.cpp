// `riders apply` on a large job beside `cat` of fragment and job: time as a
// ratio in one run, and peak memory.
//     apply_bench RIDERS_PROGRAM [MEGABYTES [TURNS]]
#include <fcntl.h>
#include <spawn.h>
#include <stdlib.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace
{

struct Run {
    double seconds = 0;
    long peakKilobytes = 0;
};

// Runs a program with its standard output in a new file.
Run timed(const std::vector<std::string> &words, const fs::path &output)
{
    fs::remove(output);
    std::vector<char *> arguments;
    for (const std::string &word : words)
        arguments.push_back(const_cast<char *>(word.c_str()));
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output.c_str(), O_WRONLY | O_CREAT, 0600);
    const auto start = std::chrono::steady_clock::now();
    pid_t child = 0;
    int status = 1;
    rusage usage{};
    if (posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ) == 0)
        wait4(child, &status, 0, &usage);
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    posix_spawn_file_actions_destroy(&actions);
    if (status != 0) {
        fprintf(stderr, "apply_bench: %s failed\n", words[0].c_str());
        exit(1);
    }
    return {took.count(), usage.ru_maxrss};
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void writeInputs(const fs::path &riders, const fs::path &job, size_t megabytes)
{
    std::ofstream(riders) << "%!Zu3_Riders\n" << std::string(3000, '%') << "\n";
    std::ofstream out(job);
    out << "%!PS-Adobe-3.0\n%%EndComments\n%%BeginSetup\n%%EndSetup\n%%Page: 1 1\n";
    std::string block;
    while (block.size() < (1u << 20))
        block += std::to_string(block.size()) + " 1 moveto 7 0 rlineto stroke\n";
    for (size_t i = 0; i < megabytes; ++i)
        out << block;
}

} // namespace

int main(int count, char **words)
{
    if (count < 2) {
        fprintf(stderr, "usage: apply_bench RIDERS_PROGRAM [MEGABYTES [TURNS]]\n");
        return 2;
    }
    const size_t megabytes = count > 2 ? strtoul(words[2], nullptr, 10) : 300;
    const int turns = count > 3 ? std::max(atoi(words[3]), 1) : 7;
    std::string pattern = (fs::temp_directory_path() / "riders-bench-XXXXXX").string();
    const fs::path folder = mkdtemp(pattern.data());
    const fs::path riders = folder / "riders", job = folder / "job.ps", out = folder / "out.ps";
    writeInputs(riders, job, megabytes);

    std::vector<double> copying, applying, ratios;
    long peak = 0;
    timed({"cat", riders, job}, out); // once for the disk's sake
    for (int turn = 0; turn < turns; ++turn) {
        copying.push_back(timed({"cat", riders, job}, out).seconds);
        const Run run = timed({words[1], "apply", riders, job}, out);
        applying.push_back(run.seconds);
        ratios.push_back(run.seconds / copying.back());
        peak = std::max(peak, run.peakKilobytes);
    }
    fs::remove_all(folder);
    printf("apply, %zu MB job: %.0f ms; cat: %.0f ms; ratio %.2f (aim 1.0); peak memory %.1f MiB (aim 16)\n",
           megabytes, 1000 * median(applying), 1000 * median(copying), median(ratios),
           static_cast<double>(peak) / 1024);
}
