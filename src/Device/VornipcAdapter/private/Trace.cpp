#include "Trace.h"

#include <exception>

namespace kro::device::vornipc {

void TraceLine::write() const noexcept
{
    try {
        const std::string method(m_site.method);
        const std::string bareMethod = method.substr(0, method.find('<')); // g++ names a template with its arguments
        m_trace->write(static_cast<int>(m_level), m_site.file, m_site.line, bareMethod.c_str(), m_text->view());
    } catch (const std::exception&) { // NOLINT(bugprone-empty-catch): out of memory; a line less is the least loss
    }
}

} // namespace kro::device::vornipc
