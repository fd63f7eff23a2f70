// Model files: read as a whole or refused with the reasons.
#include "embedded/model/model_reader.h"
#include "fuzzing.h"
#include "host/error.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tessel;
  const std::string text(reinterpret_cast<const char*>(data), size);
  try {
    const embedded::Model model = embedded::ReadModel({text, "model", "/models"}, false);
    fuzz::Require(model.metadata != nullptr, "a model without metadata");
    for (const embedded::ModelObject& object : model.objects) {
      fuzz::Require(object.definition != nullptr, "an object without a class");
      fuzz::Require(object.values.size() == object.definition->Attributes().size(),
                    "not a value an attribute");
    }
  } catch (const HostError& error) {
    fuzz::Require(!std::string_view(error.what()).empty(), "refused without a reason");
  }
  return 0;
}
