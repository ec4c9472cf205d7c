# One switch for the whole build, since a sanitizer has to see every side of a race or an overrun.

if(VORNIPC_SANITIZE)
    add_compile_options(-fsanitize=${VORNIPC_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${VORNIPC_SANITIZE})
    if(VORNIPC_SANITIZE MATCHES "undefined")
        # The module keeps its type information to itself. The check compares type information by
        # address and would call every platform object that the module touches a wrong one.
        add_compile_options(-fno-sanitize=vptr)
    endif()
endif()
