// Runs every kept input of each fuzz target through its body: the crashers that were found
// and fixed (fuzz/regressions/<name>/), the seeds (fuzz/corpus/<name>/, the test data named
// in fuzz/seed_dirs.txt, the made seeds). A broken property or an escaping exception fails
// the target's test and names the input.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <ostream>
#include <sstream>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "fuzz/fuzz_targets.h"
#include "fuzz/property_check.h"
#include "fuzz/seeds/seed_catalog.h"
#include "tests/support/test_files.h"

namespace vl1::fuzz {

namespace {

// Derives from no standard exception, so no catch inside the plug-in or a body takes it.
struct property_violation {
    std::string text;
};

}  // namespace

void property_violated(const char* target, const std::string& what)
{
    throw property_violation{std::string(target) + ": " + what};
}

// Names the target in test output instead of dumping its bytes.
void PrintTo(const fuzz_target& target, std::ostream* out) { *out << target.name; }

namespace {

namespace fs = std::filesystem;

const fs::path source_dir = HUELOOM_SOURCE_DIR;

struct kept_input {
    std::string name;
    std::vector<uint8_t> bytes;
};

// Regular files of `dir` in name order; none if it doesn't exist.
void add_files_of(const fs::path& dir, std::vector<kept_input>& inputs)
{
    std::error_code error;
    if (!fs::is_directory(dir, error))
        return;
    std::vector<fs::path> files;
    for (const fs::directory_entry& entry : fs::directory_iterator(dir))
        if (entry.is_regular_file() && entry.path().filename().string().front() != '.')
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    for (const fs::path& file : files)
        inputs.push_back({fs::relative(file, source_dir).string(), hueloom_test::read_bytes(file)});
}

// The folders that fuzz/seed_dirs.txt names for `target`.
std::vector<fs::path> seed_dirs_of(const std::string& target)
{
    std::ifstream list(source_dir / "fuzz" / "seed_dirs.txt");
    std::vector<fs::path> dirs;
    std::string line;
    while (std::getline(list, line)) {
        std::istringstream words(line);
        std::string name;
        std::string dir;
        if (words >> name >> dir && name == target)
            dirs.push_back(source_dir / dir);
    }
    return dirs;
}

std::vector<kept_input> kept_inputs_of(const std::string& target)
{
    std::vector<kept_input> inputs;
    add_files_of(source_dir / "fuzz" / "regressions" / target, inputs);
    add_files_of(source_dir / "fuzz" / "corpus" / target, inputs);
    for (const fs::path& dir : seed_dirs_of(target))
        add_files_of(dir, inputs);
    for (named_seed& seed : generated_seeds(target))
        inputs.push_back({"made seed " + seed.name, std::move(seed.bytes)});
    return inputs;
}

// A kept input that hangs would stall the whole test run; libFuzzer gives each input 10 s, so
// one that takes a minute here ends the process with its name.
class hang_guard {
public:
    hang_guard()
        : watcher([this] { watch(); })
    {
    }
    ~hang_guard()
    {
        {
            std::lock_guard lock(mutex);
            stopping = true;
        }
        changed.notify_all();
        watcher.join();
    }
    hang_guard(const hang_guard&) = delete;
    hang_guard& operator=(const hang_guard&) = delete;

    void arm(const std::string& input)
    {
        std::lock_guard lock(mutex);
        current = input;
        deadline = std::chrono::steady_clock::now() + limit;
        armed = true;
        changed.notify_all();
    }
    void disarm()
    {
        std::lock_guard lock(mutex);
        armed = false;
    }

private:
    static constexpr std::chrono::seconds limit{60};

    void watch()
    {
        std::unique_lock lock(mutex);
        while (!stopping) {
            if (!armed) {
                changed.wait(lock);
                continue;
            }
            if (changed.wait_until(lock, deadline) == std::cv_status::timeout && armed &&
                std::chrono::steady_clock::now() >= deadline) {
                std::fprintf(stderr, "fuzz regression input '%s' still runs after %lld s\n", current.c_str(),
                             static_cast<long long>(limit.count()));
                std::fflush(stderr);
                std::_Exit(3);
            }
        }
    }

    std::mutex mutex;
    std::condition_variable changed;
    std::string current;
    std::chrono::steady_clock::time_point deadline;
    bool armed = false;
    bool stopping = false;
    std::thread watcher;  // last: starts once the members it reads exist
};

class fuzz_regression : public testing::TestWithParam<fuzz_target> {};

TEST_P(fuzz_regression, every_kept_input_keeps_the_properties)
{
    const fuzz_target target = GetParam();
    const std::vector<kept_input> inputs = kept_inputs_of(target.name);
    ASSERT_FALSE(inputs.empty()) << "no seed for fuzz target " << target.name;
    hang_guard guard;
    for (const kept_input& input : inputs) {
        SCOPED_TRACE(input.name);
        guard.arm(input.name);
        try {
            EXPECT_EQ(target.body(input.bytes.data(), input.bytes.size()), 0);
        } catch (const property_violation& violation) {
            ADD_FAILURE() << violation.text;
        } catch (const std::exception& e) {
            ADD_FAILURE() << "exception escaped the body: " << e.what();
        }
        guard.disarm();
    }
}

INSTANTIATE_TEST_SUITE_P(targets, fuzz_regression, testing::ValuesIn(all_fuzz_targets().begin(), all_fuzz_targets().end()),
                         [](const testing::TestParamInfo<fuzz_target>& info) { return std::string(info.param.name); });

}  // namespace

}  // namespace vl1::fuzz
