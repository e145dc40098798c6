// SPDX-License-Identifier: MIT
/// Which sanitizer the tests are built with, said alike for GCC and clang.
#pragma once

/// Defined with AddressSanitizer, which keeps freed memory back, and reserves more addresses than
/// any limit.
#ifdef __SANITIZE_ADDRESS__
#define ADDRESS_SANITIZER
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ADDRESS_SANITIZER
#endif
#endif
