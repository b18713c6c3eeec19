# What other projects need to find the installed library: a CMake package and pkg-config files. Both name their
# folders relative to themselves, so that the installed tree can be moved.
include(CMakePackageConfigHelpers)

set(package_folder "${CMAKE_INSTALL_LIBDIR}/cmake/orvo")
configure_package_config_file(
  "${CMAKE_CURRENT_LIST_DIR}/orvoConfig.cmake.in" "${PROJECT_BINARY_DIR}/orvoConfig.cmake"
  INSTALL_DESTINATION "${package_folder}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/orvoConfigVersion.cmake"
  COMPATIBILITY SameMinorVersion)
install(EXPORT orvo NAMESPACE orvo:: FILE orvoTargets.cmake DESTINATION "${package_folder}")
install(
  FILES "${PROJECT_BINARY_DIR}/orvoConfig.cmake" "${PROJECT_BINARY_DIR}/orvoConfigVersion.cmake"
  DESTINATION "${package_folder}")

# The pages that the headers refer to, and what they refer to, in the same folders.
foreach(page
    CHANGELOG.md
    CONTRIBUTING.md
    LICENSE
    README.md
    SECURITY.md
    bench/README.md
    docs/check.md
    docs/format.md
    docs/host-interfaces.md
    docs/interchange.md
    docs/json.md
    docs/library.md
    docs/orvo.xsd
    docs/pictures/music.svg
    docs/pictures/radio-spot-dark.svg
    docs/pictures/radio-spot.svg
    docs/reliability.md
    docs/tool.md
    examples/host/RenameClip.cpp
    tests/trust/README.md)
  get_filename_component(folder "${page}" DIRECTORY)
  install(FILES "${page}" DESTINATION "${CMAKE_INSTALL_DOCDIR}/${folder}")
endforeach()

file(RELATIVE_PATH ORVO_PREFIX_OF_PKGCONFIG "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
foreach(module orvo orvo-host)
  configure_file("${CMAKE_CURRENT_LIST_DIR}/${module}.pc.in" "${PROJECT_BINARY_DIR}/${module}.pc" @ONLY)
  install(FILES "${PROJECT_BINARY_DIR}/${module}.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
endforeach()
