#pragma once

/// Marks what the shared library exports.
#define ORVO_API __attribute__((visibility("default")))
