#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "clsTRX_Registry.h"

namespace genvara {

/// The project files that were saved last, the newest first, in the settings store.
class RecentFiles {
  public:
    static constexpr std::size_t kMost = 4;

    /// @param baseSubkey key below which this version keeps its settings. The store outlives the object.
    RecentFiles(clsTRX_Registry& registry, const std::string& baseSubkey);

    /// The names, up to the first that is missing, empty or cannot be read.
    [[nodiscard]] std::vector<std::string> Read() const;

    /// Puts a name first; a fifth drops the oldest.
    /// @throws RaisedError of the settings store.
    void Add(const std::string& name) const;

  private:
    void Open(bool create) const;
    [[nodiscard]] std::string Entry(std::size_t number) const;

    clsTRX_Registry* m_registry;
    std::string m_subkey;
};

}  // namespace genvara
