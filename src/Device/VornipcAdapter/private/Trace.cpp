#include "Trace.h"

namespace kro::device::vornipc {

void TraceLine::write() const
{
    m_trace->write(static_cast<int>(m_level), m_site.file, m_site.line, m_site.method, m_text->view());
}

} // namespace kro::device::vornipc
