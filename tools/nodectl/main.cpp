#include <exception>

#include "CommandLine.h"
#include "Failure.h"
#include "Output.h"

int main(int argc, char** argv)
{
    using namespace nodectl;
    holdStandardStreams();
    try {
        if (const auto options = readCommandLine(argc, argv)) {
            options->command(*options);
        }
        return static_cast<int>(ExitCode::done);
    } catch (const OutputClosed&) {
        return static_cast<int>(ExitCode::done);
    } catch (const Failure& failure) {
        note(failure.what());
        return static_cast<int>(failure.exitCode());
    } catch (const std::exception& error) {
        note(error.what());
        return static_cast<int>(ExitCode::refused);
    }
}
