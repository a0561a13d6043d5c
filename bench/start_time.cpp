// Times a whole start of the program: from its call to the first painting of its main window.
//
//     start_time [--cold] PROGRAM [TIMES]
//
// The toolkit itself reports each painting, so the program needs to know nothing of this. --cold empties the system's
// file cache before each start, for which only root has the right.

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace
{
bool EmptyFileCache()
{
    sync();
    std::ofstream switches("/proc/sys/vm/drop_caches");
    switches << 3 << std::flush;
    return switches.good();
}

/// Milliseconds until the program's main window is painted; empty when it ends before.
std::optional<double> TimeStart(const std::string& program, const std::string& folder)
{
    std::array<int, 2> pipeEnds{};
    if (pipe(pipeEnds.data()) != 0)
        return std::nullopt;
    const std::string user = "--user=" + folder;
    const std::string settings = "--settings=" + folder + "settings.ini";
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0) {
        dup2(pipeEnds[1], STDERR_FILENO);
        close(pipeEnds[0]);
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
        setenv("QT_LOGGING_RULES", "qt.widgets.painting=true", 1);
        execl(program.c_str(), program.c_str(), user.c_str(), settings.c_str(), nullptr);
        _exit(127);
    }
    close(pipeEnds[1]);
    std::optional<double> taken;
    FILE* const messages = fdopen(pipeEnds[0], "r");
    for (std::array<char, 4096> line{}; !taken && std::fgets(line.data(), line.size(), messages);) {
        if (std::strstr(line.data(), "Flushing") && std::strstr(line.data(), "CMainWindow"))
            taken = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    }
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    std::fclose(messages);
    return taken;
}
} // namespace

int main(int argc, char** argv)
{
    const bool isCold = argc > 1 && std::strcmp(argv[1], "--cold") == 0;
    const int first = isCold ? 2 : 1;
    if (argc <= first) {
        std::fprintf(stderr, "start_time [--cold] PROGRAM [TIMES]\n");
        return 2;
    }
    const int times = argc > first + 1 ? std::max(std::atoi(argv[first + 1]), 1) : 15;
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("start_time." + std::to_string(getpid()));
    std::filesystem::create_directory(folder);
    std::vector<double> all;
    // The very first start makes the user's files and counts for nothing.
    for (int run = 0; run <= times; ++run) {
        if (isCold && !EmptyFileCache()) {
            std::fprintf(stderr, "The file cache cannot be emptied.\n");
            return 1;
        }
        const auto taken = TimeStart(argv[first], folder.string() + '/');
        if (!taken) {
            std::fprintf(stderr, "%s has painted nothing.\n", argv[first]);
            return 1;
        }
        if (run > 0)
            all.push_back(*taken);
    }
    std::filesystem::remove_all(folder);
    std::sort(all.begin(), all.end());
    std::printf("%d %s starts: least %.0f ms, median %.0f ms, most %.0f ms\n", times, isCold ? "cold" : "warm",
                all.front(), all[all.size() / 2], all.back());
    return 0;
}
