// Metadata in the form of the model file (docs/model-file.md).
#pragma once

#include <memory>

#include "embedded/model/json_object.h"
#include "embedded/model/metadata.h"

namespace tessel::embedded {

// The metadata in a model; other keys are not looked at. What is wrong is reported, and the metadata is then
// of no use.
[[nodiscard]] std::shared_ptr<Metadata> ReadMetadata(const JsonObject& model);

}  // namespace tessel::embedded
