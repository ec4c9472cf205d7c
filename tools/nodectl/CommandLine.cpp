#include "CommandLine.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "Commands.h"
#include "Completion.h"
#include "Failure.h"
#include "Output.h"
#include "Suggestion.h"

namespace nodectl {

namespace {

constexpr std::uint32_t anyWord = std::numeric_limits<std::uint32_t>::max();

/// Longest wait for an answer: an hour, in milliseconds.
constexpr std::uint32_t longestWait = 3600000;

std::uint32_t numberFrom(const std::string& option, const std::string& text, std::uint32_t maximum)
{
    const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    const char* const end = text.data() + text.size();
    std::uint32_t number = 0;
    const auto [rest, error] = std::from_chars(text.data() + (hexadecimal ? 2 : 0), end, number, hexadecimal ? 16 : 10);
    if (error != std::errc() || rest != end || number > maximum) {
        throw Failure(ExitCode::wrongUsage,
                      fmt::format("{}: {} is no whole number from 0 to {} (decimal, or hexadecimal "
                                  "behind 0x)",
                                  option, inQuotes(text), maximum));
    }
    return number;
}

template <class Store>
void addNumber(CLI::App& command, const std::string& option, const std::string& help, std::uint32_t maximum,
               Store store)
{
    command
        .add_option_function<std::string>(
            option, [option, maximum, store](const std::string& text) { store(numberFrom(option, text, maximum)); },
            help)
        ->type_name("N");
}

std::vector<std::string> areaNames()
{
    std::vector<std::string> names;
    for (const MessageDefinition& definition : messageCatalogue()) {
        if (const std::string name(toString(definition.area)); names.empty() || names.back() != name) {
            names.push_back(name);
        }
    }
    return names;
}

/// The command line as CLI11 sees it, filling one set of options.
class Syntax {
public:
    explicit Syntax(Options& options) : m_options(options)
    {
        m_app.require_subcommand(1, 1);
        m_app
            .add_option_function<std::string>(
                "--unit", [this](const std::string& text) { m_options.unit = unitAddressFrom(text); },
                "Link address of the radio unit (default 127.0.0.1:23043)")
            ->type_name("HOST:PORT");
        m_app.add_flag("--json", m_options.json, "Print one JSON object a line and nothing else");
        m_app.footer("Exit codes: 0 done, 1 no answer in time or a refused request, 2 wrong usage, 3 no connection.");

        addList();
        addMessage(addCommand("describe", "Show the fields of a message", describe));
        addSend();
        addMonitor();
        CLI::App& encodeCommand =
            addCommand("encode", "Print a message as it follows the device word on the link", encode);
        addMessage(encodeCommand);
        addContents(encodeCommand);
        encodeCommand.footer("With --json the printed form, with the buffer under \"hex\".");
        addDecode();
        addBringUp();
        addCompletion();
    }

    CLI::App& app() { return m_app; }

    /// What may stand in place of the last of the words that follow "nodectl".
    std::vector<std::string> completions(const std::vector<std::string>& words) const
    {
        const std::string last = words.empty() ? "" : words.back();
        const std::string before = words.size() > 1 ? words[words.size() - 2] : "";
        std::vector<std::string> candidates = valuesOf(before);
        if (candidates.empty() && !takesValue(before)) {
            const std::vector<std::string> arguments = argumentsBefore(words);
            if (last.starts_with('-')) {
                candidates = namesOfOptions(arguments.empty() ? m_app : commandNamed(arguments.front()));
            } else if (arguments.empty()) {
                candidates = namesOfCommands();
            } else if (arguments.size() == 1) {
                candidates = valuesOf(arguments.front());
            }
        }
        std::sort(candidates.begin(), candidates.end());
        candidates.erase(std::unique(candidates.begin(), candidates.end()), candidates.end());
        std::erase_if(candidates, [&last](const std::string& candidate) { return !candidate.starts_with(last); });
        return candidates;
    }

    /// What CLI11's error means to whoever typed the line.
    Failure failureFrom(const CLI::ParseError& error) const
    {
        const auto commands = m_app.get_subcommands();
        const std::string name = commands.empty() ? "nodectl" : "nodectl " + commands.front()->get_name();
        return {ExitCode::wrongUsage, fmt::format("{} ('{} --help' shows the usage)", whatIsWrong(error), name)};
    }

private:
    CLI::App& addCommand(const std::string& name, const std::string& help, void (*function)(const Options&))
    {
        CLI::App& command = *m_app.add_subcommand(name, help);
        command.fallthrough();
        command.callback([this, function] { m_options.command = function; });
        return command;
    }

    void addList()
    {
        addCommand("list", "List the messages of the protocol", list)
            .add_option_function<std::string>(
                "--area",
                [this](const std::string& name) {
                    m_options.area = messageAreaByName(name);
                    if (!m_options.area) {
                        throw Failure(ExitCode::wrongUsage, fmt::format("--area: no area is named {}{}", inQuotes(name),
                                                                        didYouMean(name, areaNames())));
                    }
                },
                fmt::format("Only the messages of one area: {}", fmt::join(areaNames(), ", ")))
            ->type_name("NAME");
    }

    void addSend()
    {
        CLI::App& command = addCommand("send", "Send a message and print what comes back", send);
        addMessage(command);
        addContents(command);
        addBrief(command);
        addWait(command, "for an answer");
    }

    void addMonitor()
    {
        CLI::App& command = addCommand("monitor", "Print every message that the unit sends, until Ctrl-C", monitor);
        command.add_option("--until", m_options.until, "End with 0 when this message has come, with 1 when it has not")
            ->type_name("NAME");
        addBrief(command);
        addWait(command, "for the message of --until");
    }

    void addDecode()
    {
        CLI::App& command = addCommand("decode", "Print a buffer, as it follows the device word on the link", decode);
        command
            .add_option_function<std::string>(
                "--from",
                [this](const std::string& from) {
                    if (from != "node" && from != "unit") {
                        throw Failure(ExitCode::wrongUsage,
                                      fmt::format("--from: {} is neither 'node' nor 'unit'", inQuotes(from)));
                    }
                    m_options.from = from == "node" ? MessageDirection::in : MessageDirection::out;
                },
                "Who sent the buffer, where an id has two messages (default unit)")
            ->type_name("node|unit");
        addNumber(command, "--device", "Its device word: 0 (default) ordinary messages, 1 the PS device", anyWord,
                  [this](std::uint32_t device) { m_options.device = device; });
        command
            .add_option_function<std::vector<std::string>>(
                "HEX",
                [this](const std::vector<std::string>& parts) {
                    m_options.hex = fmt::format("{}", fmt::join(parts, " "));
                },
                "The buffer in hexadecimal, blanks allowed; - reads it from standard input")
            ->required();
    }

    void addBringUp()
    {
        CLI::App& command =
            addCommand("bringup", "Self test, software status, MMU in service, and what the unit answers", bringUp);
        addNumber(command, "--slot", "Slot of the unit in the node (default 1)", anyWord,
                  [this](std::uint32_t slot) { m_options.slot = slot; });
        addNumber(command, "--sender", "Sender id of the node (default 1)", anyWord,
                  [this](std::uint32_t sender) { m_options.sender = sender; });
        addNumber(command, "--eh",
                  "The node's capabilityEH (default 0x26: 0x02 radio detected, 0x04 log lines, 0x20 BPM commands)",
                  anyWord, [this](std::uint32_t code) { m_options.capabilityEH = code; });
        command.add_flag("--verbose", m_options.verbose, "Print every message whole below its line");
        addWait(command, "for an answer");
    }

    void addCompletion()
    {
        addCommand("completion", "Print the script that completes this command line in a shell", completion)
            .add_option_function<std::string>(
                "SHELL",
                [this](const std::string& shell) {
                    if (shell != "bash" && shell != "zsh") {
                        throw Failure(ExitCode::wrongUsage,
                                      fmt::format("SHELL: {} is neither 'bash' nor 'zsh'", inQuotes(shell)));
                    }
                    m_options.shell = shell;
                },
                "bash or zsh: eval \"$(nodectl completion bash)\"")
            ->required();
    }

    void addMessage(CLI::App& command)
    {
        command.add_option("NAME", m_options.messageName, "Name of the message; 'nodectl list' shows all")->required();
    }

    void addContents(CLI::App& command)
    {
        struct HeaderOption {
            const char* option;
            const char* field;
            const char* help;
        };
        constexpr HeaderOption headerOptions[] = {
            {"--ct", "ct", "Radio channel concerned"}, {"--slot", "slot", "Slot of the unit in the node"},
            {"--sender", "senderId", "Sender id"},     {"--seq", "seqNr", "Sequence number"},
            {"--sig", "sigId", "Signal id"},           {"--spare", "spare1", "Spare word of the header"},
        };
        for (const auto& [option, field, help] : headerOptions) {
            addNumber(command, option, help, anyWord, [this, name = std::string(field)](std::uint32_t value) {
                m_options.header.emplace_back(name, value);
            });
        }
        command.add_option("--body", m_options.body, "Fields by name; PS messages have their header in it too")
            ->type_name("JSON|@FILE|-");
    }

    void addBrief(CLI::App& command)
    {
        command.add_flag("--brief", m_options.brief,
                         "Print a line a message: time, direction, name, fields that matter");
    }

    void addWait(CLI::App& command, const std::string& what)
    {
        addNumber(command, "--wait", fmt::format("Milliseconds to wait {} (default 2000)", what), longestWait,
                  [this](std::uint32_t wait) { m_options.wait = std::chrono::milliseconds(wait); });
    }

    std::string whatIsWrong(const CLI::ParseError& error) const
    {
        const auto commands = m_app.get_subcommands();
        const auto surplus = m_app.remaining(true);
        if (commands.empty()) {
            const auto word = std::find_if(surplus.begin(), surplus.end(), [](const auto& e) { return e[0] != '-'; });
            if (word != surplus.end()) {
                return fmt::format("no command is named {}{}", inQuotes(*word), didYouMean(*word, namesOfCommands()));
            }
        }
        if (!surplus.empty() && surplus.front().starts_with('-')) {
            const std::string option = surplus.front().substr(0, surplus.front().find('='));
            return fmt::format("no option is named {}{}", inQuotes(option),
                               didYouMean(option, namesOfOptions(commands.empty() ? m_app : *commands.front())));
        }
        if (!surplus.empty()) {
            return fmt::format("{} is one argument too many", inQuotes(surplus.front()));
        }
        return commands.empty() ? "a command is missing" : error.what();
    }

    /// The words that may follow an option or a command.
    static std::vector<std::string> valuesOf(const std::string& word)
    {
        if (word == "describe" || word == "send" || word == "encode" || word == "--until") {
            std::vector<std::string> names;
            for (const MessageDefinition& definition : messageCatalogue()) {
                names.push_back(definition.name);
            }
            return names;
        }
        if (word == "--area") {
            return areaNames();
        }
        if (word == "--from") {
            return {"node", "unit"};
        }
        return word == "completion" ? std::vector<std::string>{"bash", "zsh"} : std::vector<std::string>{};
    }

    bool takesValue(const std::string& word) const
    {
        const auto commands = m_app.get_subcommands([](const CLI::App*) { return true; });
        return word.starts_with('-') && std::any_of(commands.begin(), commands.end(), [&](const CLI::App* command) {
                   for (const CLI::App* app : {command, &m_app}) {
                       const CLI::Option* const option = app->get_option_no_throw(word);
                       if (option != nullptr && option->get_expected_max() > 0) {
                           return true;
                       }
                   }
                   return false;
               });
    }

    /// The words before the last that are neither options nor their values: the command, then its arguments.
    std::vector<std::string> argumentsBefore(const std::vector<std::string>& words) const
    {
        std::vector<std::string> arguments;
        for (std::size_t i = 0; i + 1 < words.size(); ++i) {
            if (!words[i].starts_with('-') && (i == 0 || !takesValue(words[i - 1]))) {
                arguments.push_back(words[i]);
            }
        }
        return arguments;
    }

    const CLI::App& commandNamed(const std::string& name) const
    {
        const auto found = m_app.get_subcommands([&name](const CLI::App* app) { return app->get_name() == name; });
        return found.empty() ? m_app : *found.front();
    }

    std::vector<std::string> namesOfCommands() const
    {
        std::vector<std::string> names;
        for (const CLI::App* command : m_app.get_subcommands([](const CLI::App*) { return true; })) {
            names.push_back(command->get_name());
        }
        return names;
    }

    std::vector<std::string> namesOfOptions(const CLI::App& command) const
    {
        std::vector<std::string> names;
        for (const CLI::App* app : {&command, &m_app}) {
            for (const CLI::Option* option : app->get_options()) {
                if (option->nonpositional()) {
                    names.push_back(option->get_name());
                }
            }
        }
        return names;
    }

    Options& m_options;
    CLI::App m_app{"The node's console: speaks the node IPC protocol to a radio unit.", "nodectl"};
};

} // namespace

std::optional<Options> readCommandLine(int argc, const char* const* argv)
{
    Options options;
    Syntax syntax(options);
    if (argc > 1 && std::string_view(argv[1]) == "complete") { // asked by the shell, so its words are not looked at
        for (const std::string& candidate : syntax.completions({argv + 2, argv + argc})) {
            print(candidate);
        }
        return std::nullopt;
    }
    try {
        syntax.app().parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        print(syntax.app().help());
        return std::nullopt;
    } catch (const CLI::ParseError& error) {
        throw syntax.failureFrom(error);
    }
    return options;
}

} // namespace nodectl
