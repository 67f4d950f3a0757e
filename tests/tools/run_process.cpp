#include "tests/tools/run_process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>

#include "tests/support/test_files.h"
#include "tests/support/test_paths.h"

extern char** environ;

namespace hueloom_test {

process_result run_process(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                           const std::filesystem::path& home)
{
    const std::filesystem::path capture = make_temp_dir("process");
    const std::string out_path = (capture / "out").string();
    const std::string err_path = (capture / "err").string();

    std::vector<std::string> environment;
    for (char** entry = environ; *entry != nullptr; ++entry)
        if (std::strncmp(*entry, "HOME=", 5) != 0)
            environment.emplace_back(*entry);
    environment.push_back("HOME=" + home.string());

    std::vector<std::string> argv_text{program.string()};
    argv_text.insert(argv_text.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (std::string& a : argv_text)
        argv.push_back(a.data());
    argv.push_back(nullptr);
    std::vector<char*> envp;
    for (std::string& e : environment)
        envp.push_back(e.data());
    envp.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 1, out_path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    posix_spawn_file_actions_addopen(&actions, 2, err_path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    pid_t pid = 0;
    const int spawned = posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), envp.data());
    posix_spawn_file_actions_destroy(&actions);

    process_result result;
    if (spawned != 0)
        return result;
    int status = 0;
    while (waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    if (WIFEXITED(status))
        result.exit_code = WEXITSTATUS(status);
    result.out = read_file(out_path);
    result.err = read_file(err_path);
    return result;
}

}  // namespace hueloom_test
