// A host outside the library's tree: it uses both libraries through their installed headers.
#include <varnellib/base/stack.h>
#include <varnellib/base/string.h>
#include <varnellibwx/varnellibwx.h>

#include <cstdio>
#include <cstring>

int main() {
    Varnel::Stack<int> numbers;
    for (int i = 0; i < 10; ++i)
        numbers.push(i);
    const auto text = Varnel::Wx::formatWxAssertFailure("a.cpp", 7, "f", "x", "m");
    const bool ok = numbers.size() == 10 && text &&
                    std::strstr(text->toUtf8().data(), "File: a.cpp(7)") != nullptr;
    std::printf("consumer of VarnelLibWx %s: %s\n", Varnel::LibWx::version(), ok ? "ok" : "FAILED");
    return ok ? 0 : 1;
}
