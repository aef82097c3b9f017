# Header-only libraries from Debian packages. The cross build must not see
# /usr/include as a whole (its C library headers are the host's), so a
# library's folder reaches it through a folder of its own in the build tree
# that holds only a link to that library's headers.
function(kx_system_headers target include_root folder)
  if(CMAKE_CROSSCOMPILING)
    set(dir ${CMAKE_BINARY_DIR}/${target}-include)
    file(MAKE_DIRECTORY ${dir})
    if(NOT EXISTS ${dir}/${folder})
      file(CREATE_LINK ${include_root}/${folder} ${dir}/${folder} SYMBOLIC)
    endif()
    target_include_directories(${target} SYSTEM INTERFACE ${dir})
  elseif(NOT include_root STREQUAL "/usr/include")
    target_include_directories(${target} SYSTEM INTERFACE ${include_root})
  endif()
endfunction()
