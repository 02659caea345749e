# transspace_public_headers(TARGET target DIRECTORY dir [SUBDIR sub])
# Publishes the headers in `dir` as <transspace/[sub/]name.h>: installed under
# include/transspace/[sub/], and linked into the same layout in the build tree, so that a project
# that adds this one with add_subdirectory or FetchContent includes them exactly as an installed
# copy's user does. The code of this repository also keeps reaching them by their plain names.
function(transspace_public_headers)
  cmake_parse_arguments(H "" "TARGET;DIRECTORY;SUBDIR" "" ${ARGN})
  file(GLOB headers CONFIGURE_DEPENDS ${H_DIRECTORY}/*.h)
  set(staged ${PROJECT_BINARY_DIR}/include/transspace)
  if(H_SUBDIR)
    set(staged ${staged}/${H_SUBDIR})
  endif()
  file(MAKE_DIRECTORY ${staged})
  foreach(header ${headers})
    get_filename_component(name ${header} NAME)
    file(CREATE_LINK ${header} ${staged}/${name} SYMBOLIC)
  endforeach()
  target_include_directories(${H_TARGET} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/include>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  if(TRANSSPACE_INSTALL)
    file(RELATIVE_PATH subdir ${PROJECT_BINARY_DIR}/include ${staged})
    install(FILES ${headers} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/${subdir} COMPONENT dev)
  endif()
endfunction()

# transspace_shared_library(target EXPORT_NAME name)
# The properties that the three installed libraries share: a versioned SONAME, the alias target
# transspace::<name> that an installed package also provides, and the install rules.
function(transspace_shared_library target)
  cmake_parse_arguments(L "" "EXPORT_NAME" "" ${ARGN})
  set_target_properties(${target} PROPERTIES
    EXPORT_NAME ${L_EXPORT_NAME}
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}
    # An installed library finds its sibling libraries (the host) wherever the prefix is.
    INSTALL_RPATH "$ORIGIN")
  add_library(transspace::${L_EXPORT_NAME} ALIAS ${target})
  if(TRANSSPACE_INSTALL)
    install(TARGETS ${target} EXPORT transspaceTargets
      LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT dev)
  endif()
endfunction()
