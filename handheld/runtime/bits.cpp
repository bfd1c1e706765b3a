#include "handheld/runtime/runtime.h"

namespace {

// The lowest bit times this number has another five bits at the top for each place of the bit.
constexpr uint32_t k_places_factor = 0x077CB531;

struct Places {
    uint8_t of[32];
};

constexpr Places make_places() {
    Places places = {};
    for (uint32_t i = 0; i < 32; ++i) {
        places.of[(k_places_factor << i) >> 27] = static_cast<uint8_t>(i);
    }
    return places;
}

constexpr Places k_places = make_places();

}  // namespace

int __ctzsi2(uint32_t bits) {
    return bits == 0 ? 32 : k_places.of[((bits & (0 - bits)) * k_places_factor) >> 27];
}

int __ctzdi2(uint64_t bits) {
    const uint32_t low = static_cast<uint32_t>(bits);
    return low != 0 ? __ctzsi2(low) : 32 + __ctzsi2(static_cast<uint32_t>(bits >> 32));
}
