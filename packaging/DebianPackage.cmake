# `cpack -G DEB` in the build directory: transspace_<version>_<arch>.deb with the libraries, the
# command, its manual page and the schema, and transspace-dev_<version>_<arch>.deb with the headers
# and the CMake and pkg-config files. Depends is worked out from the binaries (dpkg-shlibdeps).
set(CPACK_PACKAGE_NAME transspace)
set(CPACK_PACKAGE_VENDOR "transspace developers")
set(CPACK_PACKAGE_CONTACT "transspace developers <transspace@transspace.example.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Value space library with XPath views of data dictionaries")
set(CPACK_PACKAGE_DESCRIPTION "A C++ library that keeps named values (null, numbers, texts, XML \
documents) readable as text, numbers, XML and through XPath, and that turns a data source's \
dictionary into an XML document; with a reader of system files (.sav, .zsav) and the command \
transspace that exports and queries their dictionaries.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime dev)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The runtime package's own libraries satisfy the command's needs; dpkg-shlibdeps finds them there.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)

# The library reaches implementation classes of Xerces-C and Xalan-C (backend/transspace/src/xmlinternals),
# so the packages keep to the release of each that it was built and checked against (Xalan's
# library name carries its release already), beside what dpkg-shlibdeps finds.
string(REPLACE "." ";" xerces_parts "${XercesC_VERSION}")
list(GET xerces_parts 0 1 2 xerces_parts)
list(POP_BACK xerces_parts xerces_patch)
math(EXPR xerces_patch "${xerces_patch} + 1")
list(JOIN xerces_parts "." xerces_next)
set(xerces_next "${xerces_next}.${xerces_patch}~")
string(REPLACE "." ";" xalan_parts "${XalanC_VERSION}")
list(GET xalan_parts 0 xalan_major)
list(GET xalan_parts 1 xalan_minor)
math(EXPR xalan_minor_next "${xalan_minor} + 1")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME transspace)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS "libxerces-c3.2 (>= ${XercesC_VERSION}), libxerces-c3.2 (<< ${xerces_next})")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION science)
set(CPACK_DEBIAN_DEV_PACKAGE_NAME transspace-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS
  "transspace (= ${PROJECT_VERSION}), libxerces-c-dev (>= ${XercesC_VERSION}), libxerces-c-dev (<< ${xerces_next}), \
libxalan-c-dev (>= ${xalan_major}.${xalan_minor}), libxalan-c-dev (<< ${xalan_major}.${xalan_minor_next}~), \
libicu-dev")
set(CPACK_COMPONENT_DEV_DEPENDS runtime)

include(CPack)
