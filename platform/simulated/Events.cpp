#include "Core.h"
#include "SimulatedPlatform.h"

#include <chrono>

namespace simulated {

namespace {

/// How long a restarting radio stays away.
constexpr std::chrono::milliseconds restartTime{1000};

/// Calls the radio callback of a channel, if it has one and the platform runs.
template <class Function>
bool callRadioCallback(std::int32_t ct, Function function)
{
    return core().threads.enter([&] {
        CallbackSlot<IRadioCallback>* const slot = core().findRadioCallback(ct);
        return slot != nullptr && slot->call(function);
    });
}

} // namespace

bool Platform::radioUp(std::int32_t ct)
{
    return callRadioCallback(ct, [ct](IRadioCallback& callback) {
        core().setRadioUp(ct, true);
        callback.radioUp(RadioChannel{ct});
    });
}

bool Platform::radioDown(std::int32_t ct)
{
    return callRadioCallback(ct, [ct](IRadioCallback& callback) {
        core().setRadioUp(ct, false);
        callback.radioDown(RadioChannel{ct});
    });
}

bool Platform::radioCapabilitiesAvailable(std::int32_t ct)
{
    return callRadioCallback(ct,
                             [ct](IRadioCallback& callback) { callback.radioCapabilitiesAvailable(RadioChannel{ct}); });
}

bool Platform::radioOutputPowerNotification(std::int32_t ct, int power)
{
    return callRadioCallback(
        ct, [ct, power](IRadioCallback& callback) { callback.radioOutputPowerNotification(RadioChannel{ct}, power); });
}

bool Platform::fault(std::uint8_t signal, std::int32_t ct, bool active)
{
    return core().threads.enter([&] {
        return core().faultCallback.call([&](IAlarmSignalHandlerCallback& callback) {
            callback.signalFault(IAlarmSignalHandlerCallback::FaultSignal{signal}, ct, active);
        });
    });
}

std::optional<int> Platform::bpmCommand(const std::vector<unsigned char>& command)
{
    std::optional<int> result;
    core().threads.enter([&] {
        return core().bpmCallback.call(
            [&](IRlbspKroApi::BpmCallback& callback) { result = callback.rawMsgCallback(command); });
    });
    return result;
}

void Core::restartRadio(std::int32_t channel)
{
    const auto restart = [this, channel] {
        setRadioUp(channel, false);
        Platform::instance().radioDown(channel);
        if (stopping.sleepFor(restartTime)) {
            setRadioUp(channel, true);
            Platform::instance().radioUp(channel);
        }
    };
    try {
        threads.run(restart);
    } catch (const std::runtime_error&) {
        // The platform is stopping: the radio stays as it is.
    }
}

} // namespace simulated
