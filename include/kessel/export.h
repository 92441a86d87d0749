// What leaves the shared library, and what does not.
#pragma once

#if defined(_WIN32)
#if defined(KESSEL_BUILDING)
#define KESSEL_EXPORT __declspec(dllexport)
#else
#define KESSEL_EXPORT __declspec(dllimport)
#endif
#define KESSEL_HIDDEN
#else
/// Marks a class or function as part of the library's interface.
#define KESSEL_EXPORT __attribute__((visibility("default")))
/// Keeps a member of an exported class inside the library.
#define KESSEL_HIDDEN __attribute__((visibility("hidden")))
#endif
