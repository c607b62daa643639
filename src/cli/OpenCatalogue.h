#pragma once

#include <filesystem>

#include "Catalogue.h"

namespace genvara {

/// A catalogue that is fit to size with.
class OpenCatalogue : public Catalogue {
  public:
    /// @throws RaisedError if the database is missing or unfit; unfit is 0.
    explicit OpenCatalogue(const std::filesystem::path& file) : Catalogue(file) { RequireFit(); }
};

}  // namespace genvara
