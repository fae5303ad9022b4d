# Installation: headers mirroring the source tree, both libraries, a CMake package and
# pkg-config files. The shared objects are the component "runtime", everything a program needs to
# build against them is "development"; the Debian packages follow the same split.

foreach(header IN LISTS VARNEL_LIB_HEADERS)
    get_filename_component(dir ${header} DIRECTORY)
    install(FILES varnellib/${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/varnellib/${dir}
            COMPONENT development)
endforeach()
foreach(header IN LISTS VARNEL_LIBWX_HEADERS)
    get_filename_component(dir ${header} DIRECTORY)
    install(FILES varnellibwx/${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/varnellibwx/${dir}
            COMPONENT development)
endforeach()
install(FILES ${VARNEL_GENERATED_DIR}/varnellib/export.h
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/varnellib COMPONENT development)
install(FILES ${VARNEL_GENERATED_DIR}/varnellibwx/export.h
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/varnellibwx COMPONENT development)

install(TARGETS varnellib varnellibwx
        EXPORT VarnelLibWxTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime
                NAMELINK_COMPONENT development
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime)

set(VARNEL_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/VarnelLibWx)
install(EXPORT VarnelLibWxTargets NAMESPACE Varnel:: DESTINATION ${VARNEL_CMAKE_DIR}
        COMPONENT development)
configure_package_config_file(cmake/VarnelLibWxConfig.cmake.in
    ${CMAKE_CURRENT_BINARY_DIR}/VarnelLibWxConfig.cmake
    INSTALL_DESTINATION ${VARNEL_CMAKE_DIR})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/VarnelLibWxConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/VarnelLibWxConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/VarnelLibWxConfigVersion.cmake
        DESTINATION ${VARNEL_CMAKE_DIR} COMPONENT development)

# Debian's wxWidgets ships no .pc file, so the flags wx-config gives are written into ours.
execute_process(COMMAND ${wxWidgets_CONFIG_EXECUTABLE} --cxxflags
                OUTPUT_VARIABLE VARNEL_WX_CFLAGS OUTPUT_STRIP_TRAILING_WHITESPACE)
execute_process(COMMAND ${wxWidgets_CONFIG_EXECUTABLE} --libs core,base,net
                OUTPUT_VARIABLE VARNEL_WX_LIBS OUTPUT_STRIP_TRAILING_WHITESPACE)
# The .pc files find their prefix from where they are installed, so an install into any
# prefix (cmake --install --prefix) stays usable.
file(RELATIVE_PATH VARNEL_PC_TO_PREFIX /root/${CMAKE_INSTALL_LIBDIR}/pkgconfig /root)
foreach(pc varnellib varnellibwx)
    configure_file(cmake/${pc}.pc.in ${CMAKE_CURRENT_BINARY_DIR}/${pc}.pc @ONLY)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${pc}.pc
            DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
endforeach()

# Debian packages (cpack in the build folder): libvarnellibwx0 holds the shared objects of both
# libraries, libvarnellibwx-dev what building against them needs. They install under /usr.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME libvarnellibwx)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "custom wxWidgets widgets and dialogs for a renderer's tools")
set(CPACK_PACKAGE_CONTACT "VarnelLibWx developers <varnellibwx@localhost>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libvarnellibwx0)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS
    "libwxgtk3.2-1 (>= 3.2), libwxbase3.2-1 (>= 3.2), libgtk-3-0, libx11-6, libstdc++6 (>= 12)")
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
    "Widgets and dialogs for the user interface of a physically based renderer: colour picking,
tone curves over histograms, gradients, numeric spinners, skinned buttons, text, combo boxes,
tooltips and message dialogs, on a core layer of strings, containers, colour and curve maths.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libvarnellibwx-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "libvarnellibwx0 (= ${PROJECT_VERSION}-1), libwxgtk3.2-dev, libgtk-3-dev, libx11-dev")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
    "Headers, CMake package (find_package(VarnelLibWx)) and pkg-config files of VarnelLibWx.")
include(CPack)
