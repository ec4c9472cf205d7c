#pragma once

#include "SimulatedPlatform.h"

#include "InterfaceBroker.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <thread>

/// A fresh, running two-channel platform for each case.
class SimulatedPlatformFixture : public testing::Test {
protected:
    using Json = simulated::Json;

    static constexpr std::chrono::seconds deadline{10};

    SimulatedPlatformFixture() { restart(2); }
    ~SimulatedPlatformFixture() override { m_platform.stop(); }

    void restart(unsigned channels, const Json& patch = Json::object())
    {
        m_platform.configure(channels);
        m_platform.setTracePrinting(false);
        m_platform.patchState(patch);
        m_platform.start();
        m_seen = 0;
    }

    /// @return the interface behind a name, null when there is none of this type
    template <class Interface>
    std::shared_ptr<Interface> find(const std::string& name)
    {
        return std::dynamic_pointer_cast<Interface>(InterfaceBroker::getInstance().lookup(name));
    }

    /// @return the calls since the last time that this was asked
    Json newCalls()
    {
        Json answer = m_platform.calls(m_seen);
        m_seen = answer["next"].get<std::uint64_t>();
        return answer["calls"];
    }

    /// @return the state at a JSON pointer
    Json at(const std::string& pointer) { return m_platform.state().at(Json::json_pointer{pointer}); }

    template <class Condition>
    static bool comesTrue(Condition condition)
    {
        const auto end = std::chrono::steady_clock::now() + deadline;
        while (!condition()) {
            if (std::chrono::steady_clock::now() > end) {
                return false;
            }
            std::this_thread::yield();
        }
        return true;
    }

    simulated::Platform& m_platform = simulated::Platform::instance();

private:
    std::uint64_t m_seen = 0;
};
