# varnel_embed_resource(<sources variable> <file> <array name>): adds a generated source that
# holds the file's bytes as a C++ array.
function(varnel_embed_resource sources file name)
    set(input ${CMAKE_CURRENT_SOURCE_DIR}/${file})
    set(output ${CMAKE_CURRENT_BINARY_DIR}/embedded/${name}.cpp)
    add_custom_command(OUTPUT ${output}
        COMMAND ${CMAKE_COMMAND} -DINPUT=${input} -DOUTPUT=${output} -DNAME=${name}
                -P ${PROJECT_SOURCE_DIR}/cmake/EmbedFile.cmake
        DEPENDS ${input} ${PROJECT_SOURCE_DIR}/cmake/EmbedFile.cmake
        COMMENT "Embedding ${file}")
    set(${sources} ${${sources}} ${output} PARENT_SCOPE)
endfunction()
