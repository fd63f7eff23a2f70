// Metadata in the form of the model file (docs/model-file.md).
#pragma once

#include <memory>

#include "embedded/model/catalog.h"
#include "embedded/model/json_object.h"

namespace tessel::embedded {

// The metadata in a model; other keys are not looked at. What is wrong is reported, and the catalog is then
// of no use.
[[nodiscard]] std::shared_ptr<Catalog> ReadCatalog(const JsonObject& model);

}  // namespace tessel::embedded
