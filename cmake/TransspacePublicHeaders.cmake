# transspace_public_headers(target)
# A component's public headers live in its include/transspace/ folder, laid out as they are
# installed, so code inside and outside the repository includes them alike: <transspace/...>.
function(transspace_public_headers target)
  target_include_directories(${target} PUBLIC
    $<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}/include>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  if(TRANSSPACE_INSTALL)
    install(DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR}/include/transspace
      DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT dev)
  endif()
endfunction()

# transspace_shared_library(target EXPORT_NAME name [EXPORTS version-script])
# The properties that the installed libraries share: a versioned SONAME, the alias target
# transspace::<name> that an installed package also provides, the install rules, and, given a
# linker version script, only the symbols it names in the dynamic symbol table.
function(transspace_shared_library target)
  cmake_parse_arguments(L "" "EXPORT_NAME;EXPORTS" "" ${ARGN})
  if(L_EXPORTS)
    target_link_options(${target} PRIVATE "LINKER:--version-script=${L_EXPORTS}")
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${L_EXPORTS})
  endif()
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
