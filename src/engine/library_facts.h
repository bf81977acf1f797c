#pragma once

// A library that the program is built on, as the person is told of it.

#include <string>

namespace engine {

struct LibraryFacts {
    std::string name;
    std::string version; // of what is loaded, where the library tells it; else of what it was built with
    std::string licence;
};

} // namespace engine
