#pragma once

// Whether a sanitizer watches the process: it takes many times the time and the address space, looks at its
// process itself and does not bear that another traces it.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kSanitized = true;
#else
constexpr bool kSanitized = false;
#endif
