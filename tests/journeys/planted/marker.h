#pragma once

#include <cstdio>
#include <cstdlib>

/// Creates the file that ZOMREL_MARKER names as soon as the plugin is loaded.
struct Marker
{
    Marker()
    {
        const char* name = std::getenv("ZOMREL_MARKER");
        if (std::FILE* file = name != nullptr ? std::fopen(name, "w") : nullptr)
            std::fclose(file);
    }
};
