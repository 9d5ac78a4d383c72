# marlingate_options: the defines, warnings and instrumentation that every target of the tree takes.
add_library(marlingate_options INTERFACE)

target_compile_definitions(marlingate_options INTERFACE
  QT_NO_CAST_TO_ASCII
  QT_RESTRICTED_CAST_FROM_ASCII
  QT_NO_FOREACH
  QT_DEPRECATED_WARNINGS)

if(MSVC)
  target_compile_options(marlingate_options INTERFACE /utf-8 /W4 $<$<BOOL:${MARLINGATE_WERROR}>:/WX>)
else()
  target_compile_options(marlingate_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion
    $<$<BOOL:${MARLINGATE_WERROR}>:-Werror>)
endif()

if(MARLINGATE_SANITIZE)
  target_compile_options(marlingate_options INTERFACE
    -fsanitize=${MARLINGATE_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
  target_link_options(marlingate_options INTERFACE -fsanitize=${MARLINGATE_SANITIZE})
  # Their options at run time; a library would keep them from the sanitizers.
  target_sources(marlingate_options INTERFACE
    $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:${PROJECT_SOURCE_DIR}/tests/support/sanitizers.cpp>)
endif()

if(MARLINGATE_PRECOMPILE AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(marlingate_options INTERFACE -fpch-preprocess)
endif()

if(MARLINGATE_COVERAGE)
  target_compile_options(marlingate_options INTERFACE --coverage)
  target_link_options(marlingate_options INTERFACE --coverage)
endif()

if(MARLINGATE_FUZZ)
  target_compile_options(marlingate_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
