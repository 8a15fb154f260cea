// SPDX-License-Identifier: MIT
//
// Tests of what happens without memory ask for more than there is: an allocation that cannot be had
// is null, under AddressSanitizer too.
#if defined(__clang__)
#    pragma clang diagnostic ignored "-Wreserved-identifier"  // it is the sanitizer's name
#endif

extern "C" const char* __asan_default_options();
extern "C" const char* __asan_default_options() { return "allocator_may_return_null=1"; }
