// What the sanitizers do in every program that is built with them. Variables such as ASAN_OPTIONS change
// single options of it. A target adds its own in ASAN_MORE and ASAN_UNWINDING, which begin with a colon.

#ifndef ASAN_MORE
#define ASAN_MORE ""
#endif
#ifndef ASAN_UNWINDING
#define ASAN_UNWINDING ""
#endif

extern "C" {

const char *__asan_default_options()
{
    return "detect_leaks=1:strict_string_checks=1" ASAN_MORE ASAN_UNWINDING;
}

const char *__ubsan_default_options()
{
    return "print_stacktrace=1:halt_on_error=1";
}

const char *__lsan_default_options()
{
    return "print_suppressions=0";
}

// What libraries keep until the process ends, or lose, by the frames next to the allocation. Libraries have
// no frame pointers, so that only the nearest is seen, but in the tests of the corpora. Nothing of ours
// belongs here. The xcb platform has no entries: libxkbcommon reads past a string's end, which the strict
// string checks do not let pass.
const char *__lsan_default_suppressions()
{
    return
        // Qt's offscreen platform: its screen and its fonts.
        "leak:libqoffscreen\n"
        // Fonts of a program that ends without the end of its QGuiApplication: a fuzzer, or a soak that
        // fails.
        "leak:libfontconfig\n"
        // The docking library 3.8; the items of layouts that it loses are in droppeditems.cpp.
        "leak:libqtadvanceddocking\n"
        // Qt 5.15's JSON parser loses the arrays and objects of keys that come twice
        // (fuzz/corpus/project/duplicate-keys).
        "leak:QJsonDocument::fromJson\n";
}

} // extern "C"
