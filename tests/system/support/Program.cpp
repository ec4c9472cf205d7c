#include "Program.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <poll.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/inotify.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

extern char** environ;

namespace {

[[noreturn]] void fail(const std::string& what)
{
    throw std::system_error{errno, std::generic_category(), what};
}

} // namespace

std::string readFile(const std::string& path)
{
    std::ifstream in{path};
    return {std::istreambuf_iterator<char>{in}, {}};
}

TemporaryFolder::TemporaryFolder()
{
    std::string name = std::filesystem::temp_directory_path() / "radiounit-test-XXXXXX";
    if (mkdtemp(name.data()) == nullptr) {
        fail("mkdtemp " + name);
    }
    m_path = name;
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

std::string TemporaryFolder::write(const std::string& name, const std::string& content) const
{
    std::string path = m_path + "/" + name;
    std::ofstream{path} << content;
    return path;
}

Program::Program(const std::vector<std::string>& command)
{
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const auto& word : command) {
        arguments.push_back(const_cast<char*>(word.c_str()));
    }
    arguments.push_back(nullptr);

    const std::string out = m_folder.path() + "/out";
    const std::string err = m_folder.path() + "/err";
    constexpr int writing = O_WRONLY | O_CREAT | O_APPEND;
    constexpr mode_t mode = 0600;
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, out.c_str(), writing, mode);
    posix_spawn_file_actions_addopen(&files, STDERR_FILENO, err.c_str(), writing, mode);
    const int error = posix_spawn(&m_pid, arguments[0], &files, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&files);
    if (error != 0) {
        throw std::system_error{error, std::generic_category(), command.front()};
    }
    m_pidDescriptor = static_cast<int>(syscall(SYS_pidfd_open, m_pid, 0));
    if (m_pidDescriptor < 0) {
        fail("pidfd_open");
    }
}

Program::~Program()
{
    if (!m_exitCode) {
        kill(m_pid, SIGKILL);
        waitpid(m_pid, nullptr, 0);
    }
    close(m_pidDescriptor);
}

void Program::signal(int number) const
{
    kill(m_pid, number);
}

std::optional<int> Program::waitForExit(std::chrono::milliseconds howLong)
{
    pollfd entry{m_pidDescriptor, POLLIN, 0};
    if (!m_exitCode && poll(&entry, 1, static_cast<int>(howLong.count())) > 0) {
        int status = 0;
        waitpid(m_pid, &status, 0);
        constexpr int bySignal = 128;
        m_exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : bySignal + WTERMSIG(status);
    }
    return m_exitCode;
}

bool Program::waitForFile(const std::string& path) const
{
    const Deadline deadline{patience};
    const int watch = inotify_init1(IN_NONBLOCK);
    const auto folder = std::filesystem::path{path}.parent_path();
    inotify_add_watch(watch, folder.c_str(), IN_CREATE | IN_MOVED_TO);
    bool running = true;
    bool found = std::filesystem::exists(path);
    while (!found && running && !deadline.passed()) {
        std::array<pollfd, 2> entries{pollfd{watch, POLLIN, 0}, pollfd{m_pidDescriptor, POLLIN, 0}};
        poll(entries.data(), entries.size(), deadline.milliseconds());
        running = entries[1].revents == 0;
        std::array<char, 4096> events{};
        while (read(watch, events.data(), events.size()) > 0) {
        }
        found = std::filesystem::exists(path);
    }
    close(watch);
    return found;
}

std::string Program::output() const
{
    return readFile(m_folder.path() + "/out");
}

std::string Program::errors() const
{
    return readFile(m_folder.path() + "/err");
}
