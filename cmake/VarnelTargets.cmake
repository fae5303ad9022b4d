# Helpers that give both libraries the same shape:
#   <name>_objects   the compiled code, once
#   <name>           the shared library built from it (exported, installed)
#   <name>_internal  a static library from the same objects, for tests that need Detail symbols
# plus a generated export header and a check that every public header compiles on its own.

# The wx usage requirements in one target, so that the build tree and the installed
# package config (which finds wx again) agree on what a consumer needs.
add_library(varnel_wx_usage INTERFACE)
target_include_directories(varnel_wx_usage SYSTEM INTERFACE ${wxWidgets_INCLUDE_DIRS})
target_compile_definitions(varnel_wx_usage INTERFACE ${wxWidgets_DEFINITIONS})
target_compile_options(varnel_wx_usage INTERFACE ${wxWidgets_CXX_FLAGS})
target_link_libraries(varnel_wx_usage INTERFACE ${wxWidgets_LIBRARIES})

function(varnel_add_library name)
    cmake_parse_arguments(ARG "" "ALIAS;EXPORT_MACRO;EXPORT_HEADER;SOVERSION"
                          "SOURCES;HEADERS;PUBLIC_DEPS;PRIVATE_DEPS" ${ARGN})

    add_library(${name}_objects OBJECT ${ARG_SOURCES} ${ARG_HEADERS})
    target_include_directories(${name}_objects PUBLIC
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
        $<BUILD_INTERFACE:${VARNEL_GENERATED_DIR}>)
    # Object libraries get no export define of their own; name it as the shared library would.
    set_target_properties(${name}_objects PROPERTIES DEFINE_SYMBOL ${name}_EXPORTS)
    target_compile_definitions(${name}_objects PRIVATE ${name}_EXPORTS)
    target_link_libraries(${name}_objects PUBLIC ${ARG_PUBLIC_DEPS} PRIVATE ${ARG_PRIVATE_DEPS})
    generate_export_header(${name}_objects
        BASE_NAME ${ARG_EXPORT_MACRO}
        EXPORT_MACRO_NAME ${ARG_EXPORT_MACRO}_EXPORT
        EXPORT_FILE_NAME ${VARNEL_GENERATED_DIR}/${ARG_EXPORT_HEADER})

    add_library(${name} SHARED $<TARGET_OBJECTS:${name}_objects>)
    add_library(${ARG_ALIAS} ALIAS ${name})
    set_target_properties(${name} PROPERTIES
        VERSION ${PROJECT_VERSION}
        SOVERSION ${ARG_SOVERSION})
    string(REPLACE "Varnel::" "" export_name ${ARG_ALIAS})
    set_target_properties(${name} PROPERTIES EXPORT_NAME ${export_name})
    target_include_directories(${name} PUBLIC
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
        $<BUILD_INTERFACE:${VARNEL_GENERATED_DIR}>
        $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
    target_link_libraries(${name} PUBLIC ${ARG_PUBLIC_DEPS} PRIVATE ${ARG_PRIVATE_DEPS})

    # The internal library links the internal versions of our own libraries, so a test binary
    # holds one copy of each.
    set(internal_deps "")
    foreach(dep IN LISTS ARG_PUBLIC_DEPS ARG_PRIVATE_DEPS)
        if(TARGET ${dep}_internal)
            list(APPEND internal_deps ${dep}_internal)
        else()
            list(APPEND internal_deps ${dep})
        endif()
    endforeach()
    add_library(${name}_internal STATIC $<TARGET_OBJECTS:${name}_objects>)
    target_include_directories(${name}_internal PUBLIC ${PROJECT_SOURCE_DIR} ${VARNEL_GENERATED_DIR})
    target_link_libraries(${name}_internal PUBLIC ${internal_deps})

    varnel_check_headers(${name} ${ARG_HEADERS})
endfunction()

# One translation unit per public header that includes only that header.
function(varnel_check_headers name)
    set(sources "")
    foreach(header IN LISTS ARGN)
        string(MAKE_C_IDENTIFIER ${header} id)
        set(source ${CMAKE_CURRENT_BINARY_DIR}/headercheck/${id}.cpp)
        file(RELATIVE_PATH rel ${PROJECT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR}/${header})
        file(CONFIGURE OUTPUT ${source} CONTENT "#include <${rel}>\n")
        list(APPEND sources ${source})
    endforeach()
    add_library(${name}_headercheck OBJECT ${sources})
    target_link_libraries(${name}_headercheck PRIVATE ${name})
endfunction()
