#include "RunningUnit.h"

#include <csignal>
#include <gtest/gtest.h>
#include <stdexcept>

#include "Http.h"

RunningUnit::RunningUnit(const std::vector<std::string>& options, const std::string& state)
{
    const std::string ready = m_folder.path() + "/ready";
    std::vector<std::string> command{RADIOUNIT_PATH, "--link",      "127.0.0.1:0",
                                     "--control",    "127.0.0.1:0", "--ready-file",
                                     ready,          "--state",     m_folder.write("state", state)};
    command.insert(command.end(), options.begin(), options.end());
    m_program = std::make_unique<Program>(command);
    if (!m_program->waitForFile(ready)) {
        throw std::runtime_error{"the unit does not come up: " + m_program->errors()};
    }
    const auto addresses = nlohmann::json::parse(readFile(ready));
    m_link = addresses.at("link").is_string() ? addresses.at("link") : "";
    m_control = addresses.at("control").is_string() ? addresses.at("control") : "";
}

RunningUnit::~RunningUnit()
{
    EXPECT_EQ(stop(), 0) << m_program->errors();
}

std::optional<int> RunningUnit::stop()
{
    m_program->signal(SIGTERM);
    return m_program->waitForExit();
}

RunningUnit::Answer RunningUnit::request(const std::string& method, const std::string& path,
                                         const std::string& body) const
{
    const auto answer = httpExchange(m_control, httpRequest(m_control, method, path, body));
    return {answer.status, nlohmann::json::parse(answer.body, nullptr, false)};
}
