#pragma once

#include <string>

/// Facts about the product and where its files lie.
namespace orvane {

inline constexpr const char* kProductName = "Orvane";
inline constexpr const char* kToolName = "Tarnsift";

/// The folder of the running program, native.
std::string programFolder();
/// The folder of product files (style sheets, captions, option template): `resources` beside the program, else
/// ../share/tarnsift. Throws platform::Error when there is none.
std::string productFolder();
/// The component library: beside the program, else in ../lib. Throws platform::Error when there is none.
std::string componentLibrary();

} // namespace orvane
