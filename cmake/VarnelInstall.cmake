# Installation: headers mirroring the source tree, both libraries, a CMake package and
# pkg-config files.

foreach(header IN LISTS VARNEL_LIB_HEADERS)
    get_filename_component(dir ${header} DIRECTORY)
    install(FILES varnellib/${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/varnellib/${dir})
endforeach()
foreach(header IN LISTS VARNEL_LIBWX_HEADERS)
    get_filename_component(dir ${header} DIRECTORY)
    install(FILES varnellibwx/${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/varnellibwx/${dir})
endforeach()
install(FILES ${VARNEL_GENERATED_DIR}/varnellib/export.h
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/varnellib)
install(FILES ${VARNEL_GENERATED_DIR}/varnellibwx/export.h
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/varnellibwx)

install(TARGETS varnellib varnellibwx
        EXPORT VarnelLibWxTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

set(VARNEL_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/VarnelLibWx)
install(EXPORT VarnelLibWxTargets NAMESPACE Varnel:: DESTINATION ${VARNEL_CMAKE_DIR})
configure_package_config_file(cmake/VarnelLibWxConfig.cmake.in
    ${CMAKE_CURRENT_BINARY_DIR}/VarnelLibWxConfig.cmake
    INSTALL_DESTINATION ${VARNEL_CMAKE_DIR})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/VarnelLibWxConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/VarnelLibWxConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/VarnelLibWxConfigVersion.cmake
        DESTINATION ${VARNEL_CMAKE_DIR})

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
            DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()
