# The developer's default (preset dev): memory errors, leaks and undefined behaviour end the program.
if(NASSHARE_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
