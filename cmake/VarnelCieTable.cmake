# Turns the CIE 1931 2-degree colour matching functions that Debian ships (colord-data, an IT8
# file of three rows over 360..830 nm in 5 nm steps) into a C++ table at configure time.
set(VARNEL_CIE_CMF_FILE /usr/share/colord/cmf/CIE1931-2deg-XYZ.cmf
    CACHE FILEPATH "CIE 1931 2-degree colour matching functions (IT8 .cmf)")

function(varnel_generate_cie_table output)
    if(NOT EXISTS ${VARNEL_CIE_CMF_FILE})
        message(FATAL_ERROR "${VARNEL_CIE_CMF_FILE} is missing: install colord-data")
    endif()
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${VARNEL_CIE_CMF_FILE})
    file(STRINGS ${VARNEL_CIE_CMF_FILE} lines)
    set(rows "")
    set(inData FALSE)
    foreach(line IN LISTS lines)
        if(line MATCHES "^END_DATA$")
            set(inData FALSE)
        elseif(inData)
            string(STRIP "${line}" line)
            string(REGEX REPLACE "[ \t]+" "f, " line "${line}")
            list(APPEND rows "{${line}f}")
        elseif(line MATCHES "^BEGIN_DATA$")
            set(inData TRUE)
        endif()
    endforeach()
    list(LENGTH rows count)
    if(NOT count EQUAL 3)
        message(FATAL_ERROR "${VARNEL_CIE_CMF_FILE}: expected three rows of data")
    endif()
    list(JOIN rows ",\n    " VARNEL_CIE_ROWS)
    file(CONFIGURE OUTPUT ${output} CONTENT
"// Generated from ${VARNEL_CIE_CMF_FILE}: x-bar, y-bar and z-bar of the CIE 1931 2-degree
// standard observer, 360 to 830 nm in 5 nm steps.
constexpr float kCie1931[3][95] = {
    \@VARNEL_CIE_ROWS\@
};
" @ONLY)
endfunction()
