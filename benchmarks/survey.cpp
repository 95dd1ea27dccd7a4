// What a survey of the processes costs, against `ps` as a whole program and against a loop that
// reads the one file of each process that every survey needs. All are measured in turns, so that
// whatever else the machine does falls on all of them.

#include "base/values/FileDescriptor.h"
#include "benchmarks/Measuring.h"
#include "model/processes/MemoryManager.h"
#include "model/processes/linux/LinuxApplicationSource.h"
#include "model/processes/linux/ProcessFolder.h"
#include "tests/fakes/ManualClock.h"
#include "tests/fakes/ManualExecutor.h"
#include "tests/fakes/MemoryUserDefaults.h"
#include "tests/fakes/TemporaryFolder.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace tidewell {
namespace {

/// Processes of this user that sleep as long as this lives.
class Sleepers {
public:
    explicit Sleepers(std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            const pid_t child = fork();
            if (child == 0) {
                prctl(PR_SET_PDEATHSIG, SIGKILL);
                // Not this program again: those were one application.
                execlp("sleep", "sleep", "infinity", nullptr);
                _exit(127);
            }
            if (child < 0) {
                break; // no more are allowed
            }
            ids_.push_back(child);
        }
        // Until the last one sleeps, and all are older than what the source settles for.
        std::this_thread::sleep_for(std::chrono::seconds(4));
    }
    Sleepers(const Sleepers&) = delete;
    Sleepers& operator=(const Sleepers&) = delete;
    ~Sleepers() {
        for (const pid_t id : ids_) {
            kill(id, SIGKILL);
        }
        for (const pid_t id : ids_) {
            waitpid(id, nullptr, 0);
        }
    }

    std::size_t count() const { return ids_.size(); }

private:
    std::vector<pid_t> ids_;
};

/// Microseconds for which this thread has had a processor, so that others do not count.
double ownTime() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_nsec) / 1e3;
}

/// A main thread that notes how long it was busy at a stretch.
class MeasuredExecutor final : public Executor {
public:
    void post(std::function<void()> job) override { jobs_.post(std::move(job)); }

    std::size_t drain() {
        const double before = ownTime();
        const std::size_t count = jobs_.drain();
        longest_ = std::max(longest_, ownTime() - before);
        return count;
    }

    double longest() const { return longest_; }

private:
    ManualExecutor jobs_;
    double longest_ = 0;
};

/// The survey of the real machine, its main thread and its worker in turns on this thread.
struct Survey {
    explicit Survey(std::vector<std::string> dataFolders)
        : source(
              [&dataFolders] {
                  auto settings = LinuxApplicationSource::usualSettings();
                  settings.dataFolders = std::move(dataFolders);
                  return settings;
              }(),
              worker, log) {}

    void take() {
        spawn(mainThread, manager->getAllProcessesMemoryUsage());
        settle(mainThread, worker);
    }

    SilentLog log;
    MemoryUserDefaults defaults;
    ManualClock clock;
    MeasuredExecutor mainThread;
    ManualExecutor worker;
    LinuxApplicationSource source;
    std::shared_ptr<MemoryManager> manager =
        std::make_shared<MemoryManager>(MemoryManager::Environment{.applications = source,
                                                                   .defaults = defaults,
                                                                   .mainThread = mainThread,
                                                                   .clock = clock,
                                                                   .log = log});
};

void runPs() {
    const pid_t child = fork();
    if (child == 0) {
        const int nowhere = open("/dev/null", O_WRONLY);
        dup2(nowhere, STDOUT_FILENO);
        execlp("ps", "ps", "-eo", "pid,rss,comm", nullptr);
        _exit(127);
    }
    int status = 0;
    waitpid(child, &status, 0);
    if (status != 0) {
        std::fprintf(stderr, "ps did not run\n");
        std::exit(1);
    }
}

void readTheSameFiles(const std::vector<std::string>& files) {
    std::array<char, 256> buffer{};
    for (const std::string& path : files) {
        const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
        [[maybe_unused]] const auto bytes = read(file.get(), buffer.data(), buffer.size());
    }
}

/// The files that a survey reads of every process of this user.
std::vector<std::string> filesRead() {
    std::vector<std::string> files;
    ProcessFolder folder("/proc");
    for (const auto& process : folder.list()) {
        if (folder.user(process.id) == geteuid()) {
            files.push_back("/proc/" + std::to_string(process.id) + "/statm");
        }
    }
    return files;
}

/// Milliseconds on the processor, of this process and of those that it has waited for.
double processorTime() {
    double milliseconds = 0;
    for (const int whose : {RUSAGE_SELF, RUSAGE_CHILDREN}) {
        rusage usage{};
        getrusage(whose, &usage);
        for (const timeval& time : {usage.ru_utime, usage.ru_stime}) {
            milliseconds +=
                static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
        }
    }
    return milliseconds;
}

/// Returns microseconds for each process.
double measureSteadySurvey(std::size_t count) {
    const Sleepers sleepers(count);
    if (sleepers.count() < count) {
        std::printf("%zu processes: only %zu are allowed here\n", count, sleepers.count());
    }
    Survey survey(LinuxApplicationSource::usualSettings().dataFolders);
    const auto files = filesRead();
    for (std::size_t read = 0; read < count; read += 100) {
        survey.take(); // until the shares of all are known
    }
    std::vector<double> ps;
    std::vector<double> loop;
    std::vector<double> own;
    std::vector<double> psProcessor;
    std::vector<double> ownProcessor;
    for (int round = 0; round < 31; ++round) {
        double before = processorTime();
        ps.push_back(microseconds(runPs));
        psProcessor.push_back(processorTime() - before);
        loop.push_back(microseconds([&files] { readTheSameFiles(files); }));
        before = processorTime();
        own.push_back(microseconds([&survey] { survey.take(); }));
        ownProcessor.push_back(processorTime() - before);
    }
    const auto rows = static_cast<double>(files.size());
    const double time = median(own);
    std::printf("steady survey of %5.0f processes         %9.2f us each\n"
                "  reading their statm files alone       %9.2f us each\n"
                "  ratio                                 %9.2f\n"
                "  ps -eo pid,rss,comm                   %9.2f us each\n"
                "  ratio                                 %9.2f    (at most 0.25)\n"
                "  on the processor                      %9.2f ms, ps %.2f ms\n"
                "  longest stretch of the main thread    %9.2f ms   (at most 1)\n",
                rows, time / rows, median(loop) / rows, time / median(loop), median(ps) / rows,
                time / median(ps), median(ownProcessor), median(psProcessor),
                survey.mainThread.longest() / 1000);
    return time / rows;
}

void writeEntries(const std::filesystem::path& folder, int count) {
    create_directories(folder / "applications");
    for (int i = 0; i < count; ++i) {
        const std::string name = "application-" + std::to_string(i);
        std::string text = "[Desktop Entry]\nType=Application\nName=Application\n";
        for (int language = 0; language < 80; ++language) {
            text.append("Name[x").append(std::to_string(language)).append("]=Application\n");
        }
        text.append("Icon=").append(name).append("\nExec=").append(name).append(" %U\n");
        writeText(folder / "applications" / (name + ".desktop"), text);
    }
}

void measureFirstSurvey(std::size_t count, int entries) {
    const Sleepers sleepers(count);
    const TemporaryFolder folder;
    writeEntries(folder.path(), entries);
    std::vector<double> whole;
    std::vector<double> longest;
    for (int round = 0; round < 7; ++round) {
        Survey survey({folder.path().string()});
        whole.push_back(microseconds([&survey] { survey.take(); }));
        longest.push_back(survey.mainThread.longest());
    }
    std::printf("first survey, %zu processes, %d desktop entries\n"
                "  from start to list                    %9.2f ms\n"
                "  longest stretch of the main thread    %9.2f ms\n",
                sleepers.count(), entries, median(whole) / 1000, median(longest) / 1000);
}

} // namespace
} // namespace tidewell

int main() {
    const double few = tidewell::measureSteadySurvey(200);
    tidewell::measureSteadySurvey(2000);
    const double many = tidewell::measureSteadySurvey(8000);
    std::printf("cost of a process, 8000 to 200          %9.2f    (no growth: 1)\n", many / few);
    tidewell::measureFirstSurvey(2000, 200);
}
