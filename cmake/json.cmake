# nlohmann-json, header-only, from the Debian package. The cross build must
# not see /usr/include as a whole (its C library headers are the host's), so
# it gets a folder of its own in the build tree that holds only a link to the
# nlohmann headers.
find_path(KX_NLOHMANN_INCLUDE nlohmann/json.hpp PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH
          REQUIRED)
add_library(kx_json INTERFACE)
if(CMAKE_CROSSCOMPILING)
  set(KX_JSON_INCLUDE ${CMAKE_BINARY_DIR}/json-include)
  file(MAKE_DIRECTORY ${KX_JSON_INCLUDE})
  if(NOT EXISTS ${KX_JSON_INCLUDE}/nlohmann)
    file(CREATE_LINK ${KX_NLOHMANN_INCLUDE}/nlohmann ${KX_JSON_INCLUDE}/nlohmann SYMBOLIC)
  endif()
  target_include_directories(kx_json SYSTEM INTERFACE ${KX_JSON_INCLUDE})
elseif(NOT KX_NLOHMANN_INCLUDE STREQUAL "/usr/include")
  target_include_directories(kx_json SYSTEM INTERFACE ${KX_NLOHMANN_INCLUDE})
endif()
