# The project's programs under valgrind: a script for each, which tests start instead.
set(folder ${PROJECT_BINARY_DIR}/tests/valgrind)

function(start_under_valgrind variable target)
  file(GENERATE OUTPUT ${folder}/${target}
    CONTENT "#!/bin/sh\nexec '${CMAKE_CURRENT_SOURCE_DIR}/valgrind/memcheck' '${folder}/logs' '$<TARGET_FILE:${target}>' \"$@\"\n"
    FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
  set(${variable} ${folder}/${target} PARENT_SCOPE)
endfunction()

start_under_valgrind(NASSHARE_DIAG nasshare-diag)
start_under_valgrind(NASSHARE_CLI nasshare-cli)
