# tsa_limit_exports(<target> <version script>)
#
# Exports from a shared library what the script names: instances of the templates of Qt and of the
# standard library would be exported, too. Windows exports what is declared so and nothing else.
function(tsa_limit_exports target script)
    set_target_properties(${target} PROPERTIES
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
    )
    if(NOT WIN32)
        target_link_options(${target} PRIVATE "LINKER:--version-script=${script}")
        set_property(TARGET ${target} PROPERTY LINK_DEPENDS "${script}")
    endif()
endfunction()
