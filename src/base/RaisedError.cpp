#include "RaisedError.h"

#include <utility>

namespace genvara {

RaisedError::RaisedError(std::int32_t number, std::string source, std::string description,
                         std::string helpFile, std::int32_t helpContext)
    : m_number(number),
      m_source(std::move(source)),
      m_description(std::move(description)),
      m_helpFile(std::move(helpFile)),
      m_helpContext(helpContext) {}

RaisedError RaisedError::WithSource(std::string source) const {
    return {m_number, std::move(source), m_description, m_helpFile, m_helpContext};
}

}  // namespace genvara
