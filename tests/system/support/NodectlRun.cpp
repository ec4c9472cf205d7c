#include "NodectlRun.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace {

std::array<int, 2> makePipe()
{
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipe");
    }
    return ends;
}

/// Appends what a pipe holds; closes it at its end.
void drain(int& pipe, std::string& text)
{
    std::array<char, 4096> block{};
    const auto count = ::read(pipe, block.data(), block.size());
    if (count > 0) {
        text.append(block.data(), static_cast<std::size_t>(count));
    } else {
        ::close(pipe);
        pipe = -1;
    }
}

} // namespace

NodectlRun::NodectlRun(const std::vector<std::string>& arguments, const std::string& input)
{
    const auto in = makePipe();
    const auto out = makePipe();
    const auto err = makePipe();

    std::vector<std::string> words{NODECTL_PATH};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    argv.reserve(words.size() + 1);
    for (std::string& word : words) {
        argv.push_back(word.data());
    }
    argv.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, in[0], STDIN_FILENO);
    ::posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
    ::posix_spawn_file_actions_adddup2(&actions, err[1], STDERR_FILENO);
    const int error = ::posix_spawn(&m_pid, NODECTL_PATH, &actions, nullptr, argv.data(), environ);
    ::posix_spawn_file_actions_destroy(&actions);
    for (const int end : {in[0], out[1], err[1]}) {
        ::close(end);
    }
    m_out = out[0];
    m_err = err[0];
    const bool written = ::write(in[1], input.data(), input.size()) == static_cast<ssize_t>(input.size());
    ::close(in[1]);
    if (error != 0 || !written) {
        throw std::runtime_error("cannot run " NODECTL_PATH);
    }
}

NodectlRun::~NodectlRun()
{
    if (m_pid > 0) {
        ::kill(m_pid, SIGKILL);
        ::waitpid(m_pid, nullptr, 0);
    }
    for (const int end : {m_out, m_err}) {
        if (end >= 0) {
            ::close(end);
        }
    }
}

bool NodectlRun::waitForOutput(const std::string& text)
{
    const Deadline deadline(patience);
    while (m_outText.find(text) == std::string::npos) {
        if (!readMore(deadline)) {
            return false;
        }
    }
    return true;
}

void NodectlRun::signal(int number) const
{
    ::kill(m_pid, number);
}

NodectlRun::Outcome NodectlRun::finish()
{
    const Deadline deadline(patience);
    while (readMore(deadline)) {
    }
    if (m_out >= 0 || m_err >= 0) {
        ::kill(m_pid, SIGKILL);
        m_errText += "\n(killed by the test: it did not end)";
    }
    int status = 0;
    ::waitpid(m_pid, &status, 0);
    m_pid = -1;
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, m_outText, m_errText};
}

/// Reads what comes next on either stream; false at the end of both, or at the deadline.
bool NodectlRun::readMore(const Deadline& deadline)
{
    std::array<pollfd, 2> streams{pollfd{m_out, POLLIN, 0}, pollfd{m_err, POLLIN, 0}};
    if ((m_out < 0 && m_err < 0) || ::poll(streams.data(), streams.size(), deadline.milliseconds()) <= 0) {
        return false;
    }
    if (streams[0].revents != 0) {
        drain(m_out, m_outText);
    }
    if (streams[1].revents != 0) {
        drain(m_err, m_errText);
    }
    return true;
}

NodectlRun::Outcome nodectl(const std::vector<std::string>& arguments, const std::string& input)
{
    return NodectlRun(arguments, input).finish();
}

std::string packed(const std::string& hexadecimal)
{
    std::string text = hexadecimal;
    std::erase(text, ' ');
    return text;
}

std::string lines(const std::vector<std::string>& all)
{
    std::string text;
    for (const std::string& line : all) {
        text += line + "\n";
    }
    return text;
}
