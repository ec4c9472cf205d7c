#include "Output.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <system_error>

#include "Failure.h"

namespace nodectl {

void holdStandardStreams()
{
    std::signal(SIGPIPE, SIG_IGN);
    int descriptor = 0;
    do {
        descriptor = ::open("/dev/null", O_RDWR);
    } while (descriptor >= 0 && descriptor <= STDERR_FILENO);
    ::close(descriptor);
}

void print(std::string_view line)
{
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fputc('\n', stdout);
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        if (errno == EPIPE) {
            throw OutputClosed();
        }
        throw Failure(ExitCode::refused,
                      fmt::format("cannot write to standard output: {}", std::system_category().message(errno)));
    }
}

void note(std::string_view line)
{
    fmt::print(stderr, "nodectl: {}\n", line);
}

bool outputHasColour()
{
    const char* const noColour = std::getenv("NO_COLOR");
    return (noColour == nullptr || *noColour == '\0') && ::isatty(STDOUT_FILENO) == 1;
}

} // namespace nodectl
