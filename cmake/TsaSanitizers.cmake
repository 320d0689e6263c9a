# Instrumentation of the whole build, chosen by a preset.

if(TSA_SANITIZE)
    add_compile_options(-fsanitize=${TSA_SANITIZE} -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${TSA_SANITIZE})
    if(TSA_SANITIZE MATCHES "undefined")
        add_compile_options(-fno-sanitize-recover=undefined)
    endif()
endif()

if(TSA_COVERAGE)
    add_compile_options(--coverage -fprofile-update=atomic)
    add_link_options(--coverage)
endif()
