#include <csignal>
#include <fcntl.h>
#include <unistd.h>

#include "CommandLine.h"
#include "Errors.h"
#include "RadioUnit.h"
#include "StopRequest.h"

namespace {

/// Started without one of the standard streams, the program would give its number to a connection, and the trace would
/// go out over the link. So each has to be there, if only as nothing.
void holdStandardStreams()
{
    int descriptor = 0;
    do {
        descriptor = ::open("/dev/null", O_RDWR);
    } while (descriptor >= 0 && descriptor <= STDERR_FILENO);
    ::close(descriptor);
}

constexpr int orderlyStop = 0;
constexpr int failure = 1;
constexpr int wrongUsage = 2;

int fail(int exitCode, const char* text)
{
    radiounit::report(text);
    return exitCode;
}

} // namespace

int main(int argc, char** argv)
{
    holdStandardStreams();
    try {
        radiounit::StopRequest stop;
        const radiounit::StopSignals signals{stop}; // first of all, so that a signal at any moment is an orderly stop
        std::signal(SIGPIPE, SIG_IGN);

        if (const auto options = radiounit::parseCommandLine(argc, argv)) {
            radiounit::RadioUnit{*options, stop}.run();
        }
        return orderlyStop;
    } catch (const radiounit::UsageError& error) {
        return fail(wrongUsage, error.what());
    } catch (const std::exception& error) {
        return fail(failure, error.what());
    }
}
