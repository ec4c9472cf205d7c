#pragma once

/// Marks what crosses the border between the radio platform's library and a module. Modules are built with hidden
/// visibility; interfaces and records need the default one, so that a cast finds the same type on both sides.
#define PLATFORM_API __attribute__((visibility("default")))
