#pragma once

// Where the product's pages stand. A build names its own host with QUILLMONT_WEB_HOST; the default is a reserved name
// that leads nowhere.

#include <string_view>

#ifndef QUILLMONT_WEB_HOST
#define QUILLMONT_WEB_HOST "https://quillmont.example"
#endif

/// Scheme and host, without a slash at its end.
inline constexpr std::string_view kWebHost = QUILLMONT_WEB_HOST;
