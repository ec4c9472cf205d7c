#pragma once

#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "Node.h"
#include "Program.h"

/// A radio unit on free ports, up and ready. Expects an orderly stop at its end.
class RunningUnit {
public:
    struct Answer {
        int status = 0;
        nlohmann::json body;
    };

    explicit RunningUnit(const std::vector<std::string>& options = {}, const std::string& state = "{}");
    ~RunningUnit();

    const std::string& link() const { return m_link; }
    const std::string& control() const { return m_control; }
    Program& program() { return *m_program; }

    /// One request to the control interface.
    Answer request(const std::string& method, const std::string& path, const std::string& body = "") const;
    nlohmann::json get(const std::string& path) const { return request("GET", path).body; }

    /// Waits until `path` answers something that satisfies the condition.
    template <typename Condition>
    bool waitFor(const std::string& path, const Condition& condition) const
    {
        const Deadline deadline{patience};
        while (!condition(get(path))) {
            if (deadline.passed()) {
                return false;
            }
        }
        return true;
    }

    /// Stops the unit with SIGTERM. @return its exit code
    std::optional<int> stop();

private:
    TemporaryFolder m_folder;
    std::unique_ptr<Program> m_program;
    std::string m_link;
    std::string m_control;
};
