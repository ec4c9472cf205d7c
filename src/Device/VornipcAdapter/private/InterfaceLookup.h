#pragma once

#include <atomic>
#include <memory>
#include <string>
#include <utility>

#include "IInterface.h"
#include "InterfaceBroker.h"
#include "RadioChannel.h"
#include "Trace.h"

namespace kro::device::vornipc {

/// An interface of the platform: looked up once, then borrowed. The broker owns the object. Empty until it has been
/// found, so ask `available` before each use. May be used while it is looked up: messages arrive during module
/// initialisation.
template <class Interface>
class PlatformInterface {
public:
    Interface* operator->() const { return m_interface.load(std::memory_order_acquire); }
    explicit operator bool() const { return m_interface.load(std::memory_order_acquire) != nullptr; }

private:
    friend class InterfaceLookup;
    std::atomic<Interface*> m_interface = nullptr;
};

/// Looks interfaces up by name and keeps the text that a missing one is logged with: the text, then the interface's
/// name.
class InterfaceLookup {
public:
    InterfaceLookup(const Trace& trace, std::string errorText, const CallSite& site = CallSite::here())
        : m_trace(trace), m_errorText(std::move(errorText)), m_site(site)
    {
    }

    /// Looks up unit-wide interfaces; stops at the first that is missing or of another type.
    /// @return whether all are there
    template <class... Interfaces>
    bool operator()(PlatformInterface<Interfaces>&... wanted) const
    {
        return (find(Interfaces::interfaceName(), wanted) && ...);
    }

    /// The same for the interfaces of one channel.
    template <class... Interfaces>
    bool operator()(RadioChannel ct, PlatformInterface<Interfaces>&... wanted) const
    {
        return (find(Interfaces::interfaceName(ct), wanted) && ...);
    }

private:
    template <class Interface>
    bool find(const std::string& name, PlatformInterface<Interface>& wanted) const
    {
        const std::shared_ptr<IInterface> found = InterfaceBroker::getInstance().lookup(name);
        auto* const interface = dynamic_cast<Interface*>(found.get());
        if (interface == nullptr) {
            m_trace.at(TraceLevel::Error, m_site) << m_errorText << name;
        }
        wanted.m_interface.store(interface, std::memory_order_release);
        return interface != nullptr;
    }

    const Trace& m_trace;
    std::string m_errorText;
    CallSite m_site;
};

/// Whether a unit-wide interface may be used; logs by name that it is missing.
template <class Interface>
bool available(const Trace& trace, const PlatformInterface<Interface>& wanted, const CallSite& site = CallSite::here())
{
    if (!wanted) {
        trace.at(TraceLevel::Error, site)
            << site.method << "(): " << Interface::interfaceName() << " was not found at the start, it was not called";
    }
    return static_cast<bool>(wanted);
}

/// The same for an interface of one channel.
template <class Interface>
bool available(const Trace& trace, const PlatformInterface<Interface>& wanted, RadioChannel ct,
               const CallSite& site = CallSite::here())
{
    if (!wanted) {
        trace.at(TraceLevel::Error, site) << site.method << "(): " << Interface::interfaceName(ct)
                                          << " was not found at the start, it was not called";
    }
    return static_cast<bool>(wanted);
}

} // namespace kro::device::vornipc
