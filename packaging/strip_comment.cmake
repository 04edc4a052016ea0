# The section that names the compiler is of no use to who runs the program; cpack's own stripping leaves it.
find_program(STRIP strip REQUIRED)
file(GLOB_RECURSE programs ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*/bin/varn-tessel)
foreach(program ${programs})
    execute_process(COMMAND ${STRIP} --remove-section=.comment ${program} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
