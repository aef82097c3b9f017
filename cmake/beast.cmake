# Boost.Beast (HTTP and WebSocket) over Boost.Asio, header-only, from the
# Debian package libboost-dev: the DevTools client's transport. Only the
# client's one source file includes them.
include(${CMAKE_CURRENT_LIST_DIR}/system_headers.cmake)
find_path(KX_BOOST_INCLUDE boost/beast.hpp PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
add_library(kx_beast INTERFACE)
kx_system_headers(kx_beast ${KX_BOOST_INCLUDE} boost)
if(WIN32)
  target_link_libraries(kx_beast INTERFACE ws2_32 mswsock)
  # One blocking connection at a time needs neither the completion port
  # machinery nor run-time type names.
  target_compile_definitions(kx_beast INTERFACE BOOST_ASIO_DISABLE_IOCP BOOST_ASIO_NO_TYPEID)
endif()
