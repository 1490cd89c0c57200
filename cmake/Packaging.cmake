# Debian packages (cpack -G DEB in a build tree), one per component:
#   libvq27-factory1      runtime   the library, SONAME-versioned
#   libvq27-factory-dev   dev       headers, platform declarations, CMake package, .pc
#   vq27-factory-sim      sim       factory-sim, the simulated platform, the UI page
# A cross build packs for its target architecture.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vq27-factory)
set(CPACK_PACKAGE_VENDOR "VQ27 factory-mode team")
set(CPACK_PACKAGE_CONTACT "VQ27 factory-mode team <factory@vq27.invalid>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# shlibs files let packages built against the libraries depend on them.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
# Debug information stays in the build tree; the packages ship stripped files.
set(CPACK_STRIP_FILES ON)
# factory-sim's libraries are this build's own (its package depends on the runtime
# package by name); dpkg-shlibdeps finds them here instead of failing.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS
  ${CMAKE_BINARY_DIR}/factorymanager ${CMAKE_BINARY_DIR}/platform)
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
if(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  message(STATUS "packages: configure with -DCMAKE_INSTALL_PREFIX=/usr for Debian paths")
endif()
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
# Installed files are root's, directories 0755, whatever the build user's umask.
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE
  GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
if(CMAKE_CROSSCOMPILING AND VQ27_DEB_ARCH)
  set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE ${VQ27_DEB_ARCH})
  # dpkg-shlibdeps reads the target's shlibs (multiarch) when told the target.
  set(ENV{DEB_HOST_ARCH} ${VQ27_DEB_ARCH})
endif()

if(VQ27_PLATFORM STREQUAL "set")
  set(CPACK_COMPONENTS_ALL runtime dev)
else()
  set(CPACK_COMPONENTS_ALL runtime dev sim)
endif()

set(VQ27_SOVERSION ${PROJECT_VERSION_MAJOR})
set(VQ27_DEBVERSION "${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libvq27-factory${VQ27_SOVERSION})
# The synopsis of every package is the project's description; these are the rest.
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "The FactoryManager object a set's platform process loads: service modes,
self-check pages, production tests and the factory UI's WebSocket server.")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_LIST_DIR}/deb/triggers)

set(CPACK_DEBIAN_DEV_PACKAGE_NAME libvq27-factory-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS
  "libvq27-factory${VQ27_SOVERSION} (= ${VQ27_DEBVERSION}), libwebsockets-dev, libjson-c-dev, libdirectfb-dev")
set(CPACK_COMPONENT_DEV_DESCRIPTION "Development files: headers of the library and of the platform declarations it is built against,
a CMake package (find_package(vq27_factory)) and a pkg-config file.")

set(CPACK_DEBIAN_SIM_PACKAGE_NAME vq27-factory-sim)
set(CPACK_DEBIAN_SIM_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_SIM_PACKAGE_DEPENDS "libvq27-factory${VQ27_SOVERSION} (= ${VQ27_DEBVERSION})")
set(CPACK_DEBIAN_SIM_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_LIST_DIR}/deb/triggers)
set(CPACK_COMPONENT_SIM_DESCRIPTION "Simulated VQ27 television with the factory-mode library
factory-sim runs the unchanged library on a PC against a simulated set,
with an operator console, line-station scripts and the reference
factory UI page.")

# Every package carries its copyright and changelog, as Debian policy asks.
foreach(component runtime dev sim)
  string(TOUPPER ${component} upper)
  set(name ${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
  set(doc ${CMAKE_CURRENT_BINARY_DIR}/deb-doc/${name})
  file(MAKE_DIRECTORY ${doc})
  configure_file(${CMAKE_CURRENT_LIST_DIR}/deb/copyright ${doc}/copyright COPYONLY)
  configure_file(${CMAKE_CURRENT_LIST_DIR}/deb/changelog.in ${doc}/changelog.Debian @ONLY)
  execute_process(COMMAND gzip -9nf ${doc}/changelog.Debian)
  install(FILES ${doc}/copyright ${doc}/changelog.Debian.gz
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${name} COMPONENT ${component})
endforeach()

include(CPack)
