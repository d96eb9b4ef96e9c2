# Settings and warnings that our own targets share; third-party code never links them.
add_library(tarnsift_settings INTERFACE)
target_compile_options(tarnsift_settings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast -Wconversion -Wno-sign-conversion
  $<$<BOOL:${TARNSIFT_WERROR}>:-Werror>)
if(TARNSIFT_SANITIZE)
  target_compile_options(tarnsift_settings INTERFACE -fsanitize=address,undefined -fno-omit-frame-pointer)
  target_link_options(tarnsift_settings INTERFACE -fsanitize=address,undefined)
endif()

# Everything ends in executables: calls within a file need not go round by way of the loader.
target_compile_options(tarnsift_settings INTERFACE $<$<CONFIG:Release>:-fno-semantic-interposition>)

# The standard headers that nearly every file needs.
function(tarnsift_precompile target)
  target_precompile_headers(${target} PRIVATE
    <algorithm> <cstdint> <functional> <map> <memory> <optional> <string> <string_view> <unordered_map> <variant> <vector>)
endfunction()
