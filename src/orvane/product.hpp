#pragma once

#include <string>
#include <string_view>

#include "platform/component/component.hpp"

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
/// An object of one of the component's classes, made through its exported entry points. The library beside this program
/// wins over one that was registered from elsewhere.
platform::Ref<platform::Object> createFromComponent(std::string_view progId);

} // namespace orvane
