# nlohmann-json, header-only, from the Debian package.
include(${CMAKE_CURRENT_LIST_DIR}/system_headers.cmake)
find_path(KX_NLOHMANN_INCLUDE nlohmann/json.hpp PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH
          REQUIRED)
add_library(kx_json INTERFACE)
kx_system_headers(kx_json ${KX_NLOHMANN_INCLUDE} nlohmann)
