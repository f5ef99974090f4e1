# Headers, libraries, the tool, pkg-config files and the CMake package.
include(CMakePackageConfigHelpers)

install(TARGETS qbdb qbobj EXPORT qbobj-targets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
if(QBOBJ_BUILD_TOOL)
    install(TARGETS qbctl DESTINATION ${CMAKE_INSTALL_BINDIR})
    set_target_properties(qbctl PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
endif()
set_target_properties(qbobj PROPERTIES INSTALL_RPATH "$ORIGIN")
install(FILES ${PROJECT_SOURCE_DIR}/include/qbobj.h ${PROJECT_SOURCE_DIR}/platform/include/qbdb.h
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/qbobj DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

# Found from where they stand, so that they follow an installation to any prefix.
file(RELATIVE_PATH prefix_from_pc ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
foreach(package qbdb qbobj)
    configure_file(${CMAKE_CURRENT_LIST_DIR}/${package}.pc.in ${PROJECT_BINARY_DIR}/${package}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${package}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/qbobj)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/qbobj-config.cmake.in
    ${PROJECT_BINARY_DIR}/qbobj-config.cmake INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/qbobj-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/qbobj-config.cmake ${PROJECT_BINARY_DIR}/qbobj-config-version.cmake
    DESTINATION ${package_folder})
install(EXPORT qbobj-targets NAMESPACE qbobj:: DESTINATION ${package_folder})
