// Reading of configuration messages: internal parts of the message reader.
#pragma once

#include <cstdint>

namespace cfg {

// A fresh, zero-filled, NUL-terminated copy of n bytes; null when memory is
// exhausted. The caller frees it with free().
char *GetToken(const uint8_t *source, uint32_t n) noexcept;

} // namespace cfg
