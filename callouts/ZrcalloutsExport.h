// Marks what the component exports; everything else in the library is hidden.

#pragma once

#define ZRCALLOUTS_API __attribute__((visibility("default")))
