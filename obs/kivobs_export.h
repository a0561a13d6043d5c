#pragma once

/// Marks what the module's shared library offers to hosts; everything else in it is hidden.
#if defined(_WIN32)
#if defined(KIVOBS_BUILD)
#define KIVOBS_EXPORT __declspec(dllexport)
#else
#define KIVOBS_EXPORT __declspec(dllimport)
#endif
#else
#define KIVOBS_EXPORT __attribute__((visibility("default")))
#endif
