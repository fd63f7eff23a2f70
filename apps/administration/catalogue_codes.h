// Every code that the system looks up, apart from the captions of the custom form's fields.
#pragma once

namespace tessel::administration {

inline constexpr const char* kCatalogueCodes[] = {
    "p0001", "p0002", "p0003", "e0010", "e0070", "e0090", "e0100", "e0120", "e0130", "e0150",
    "e0190", "e0195", "e9010", "e9020", "e9030", "c0001", "c0002", "c0003", "c0004", "c0005",
    "c0006", "c0008", "c0009", "c0010", "c0012", "c0013", "c0014", "c0015", "c0017", "c0018",
    "c0019", "c0020", "c0021", "c0022", "c0023", "c0024", "c0025", "cd001", "cd003"};

}  // namespace tessel::administration
