# One interface target carries the warnings and the Qt strictness of every target of ours.

add_library(tsa_warnings INTERFACE)

set(warnings
    -Wall
    -Wextra
    -Wpedantic
    -Wshadow
    -Wnon-virtual-dtor
    -Woverloaded-virtual
    -Wold-style-cast
    -Wcast-qual
    -Wconversion
    -Wsign-conversion
    -Wdouble-promotion
    -Wformat=2
    -Wundef
    -Wimplicit-fallthrough
    -Wextra-semi
    $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond>
    $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-branches>
    $<$<CXX_COMPILER_ID:GNU>:-Wlogical-op>
    $<$<CXX_COMPILER_ID:GNU>:-Wsuggest-override>
    $<$<BOOL:${TSA_WERROR}>:-Werror>
)
# Programs for Windows have resources besides, whose compiler knows none of these.
target_compile_options(tsa_warnings INTERFACE "$<$<COMPILE_LANGUAGE:CXX>:${warnings}>")

target_compile_definitions(tsa_warnings INTERFACE
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_URL_CAST_FROM_STRING
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
    QT_STRICT_ITERATORS
    QT_DEPRECATED_WARNINGS
    QT_DISABLE_DEPRECATED_BEFORE=0x050F00
)
