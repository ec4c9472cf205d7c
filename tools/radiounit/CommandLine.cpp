#include "CommandLine.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <fmt/format.h>
#include <iostream>

#include "Errors.h"

namespace radiounit {
namespace {

constexpr const char* noAddress = "none";
constexpr const char* defaultLink = "127.0.0.1:23043";
constexpr const char* defaultControl = VORNIPC_WITH_CONTROL ? "127.0.0.1:23080" : noAddress;

std::filesystem::path moduleBesideTheProgram()
{
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    return program.parent_path() / "libVornipcAdapter.so";
}

std::optional<HostPort> parseAddress(const std::string& option, const std::string& text, bool allowRemote)
{
    if (text == noAddress) {
        return std::nullopt;
    }
    return parseHostPort(option, text, allowRemote);
}

std::optional<std::filesystem::path> given(const std::string& file)
{
    return file.empty() ? std::nullopt : std::optional<std::filesystem::path>{file};
}

} // namespace

std::optional<Options> parseCommandLine(int argc, const char* const* argv)
{
    CLI::App app{"Simulated radio unit: runs the node IPC module on a simulated radio platform.", "radiounit"};
    Options options;
    unsigned moduleChannels = 0;
    std::string link = defaultLink;
    std::string control = defaultControl;
    std::string module = moduleBesideTheProgram().string();
    std::string state;
    std::string readyFile;

    app.add_option("--channels", options.channels, "Radios of the simulated platform: 1 or 2")
        ->check(CLI::Range(1U, 2U))
        ->capture_default_str();
    const auto* moduleChannelsOption =
        app.add_option("--module-channels", moduleChannels,
                       "Channel count given to the module: 0 to 255, default as --channels")
            ->check(CLI::Range(0U, 255U));
    app.add_option("--link", link, "HOST:PORT where nodes connect, port 0 takes a free one; none: no link")
        ->capture_default_str();
    app.add_option("--control", control, "HOST:PORT of the control interface (HTTP); none: no control interface")
        ->capture_default_str();
    app.add_option("--module", module, "Library of the module")->capture_default_str();
    app.add_option("--state", state, "JSON merge patch for the platform's state, applied before the module is created");
    app.add_option("--trace", options.traceLevel, "Starting level of every trace object: 0 (silent) to 6 (everything)")
        ->check(CLI::Range(0, 6))
        ->capture_default_str();
    app.add_option("--ready-file", readyFile, "Written once the unit is up: its real addresses and process id as JSON");
    app.add_flag("--allow-remote", options.allowRemote, "Accept addresses that other machines can reach");

    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        std::cout << app.help();
        return std::nullopt;
    } catch (const CLI::ParseError& error) {
        throw UsageError{fmt::format("{}; radiounit --help lists the options", error.what())};
    }

#if !VORNIPC_WITH_CONTROL
    if (control != noAddress) {
        throw UsageError{"--control: this build has no control interface; leave the option out or say --control none"};
    }
#endif
    options.moduleChannels =
        static_cast<unsigned char>(moduleChannelsOption->count() > 0 ? moduleChannels : options.channels);
    options.link = parseAddress("--link", link, options.allowRemote);
    options.control = parseAddress("--control", control, options.allowRemote);
    options.module = module;
    options.state = given(state);
    options.readyFile = given(readyFile);
    return options;
}

} // namespace radiounit
