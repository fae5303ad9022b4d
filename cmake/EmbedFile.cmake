# Writes OUTPUT, a C++ source defining NAME (the bytes of INPUT) and NAMESize (their count).
file(READ ${INPUT} hex HEX)
file(SIZE ${INPUT} size)
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${hex}")
string(REGEX REPLACE "((0x..,){16})" "\\1\n    " bytes "${bytes}")
file(WRITE ${OUTPUT} "// Generated from ${INPUT}; do not edit.
namespace Varnel::Wx::Resources {
extern const unsigned char ${NAME}[] = {
    ${bytes}
};
extern const int ${NAME}Size = ${size};
} // namespace Varnel::Wx::Resources
")
