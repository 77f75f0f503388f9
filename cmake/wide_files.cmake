# On 32 bits, files of more than 2 GiB, large inode numbers and times after 2038 are handled only when offsets and times
# are made 64 bits wide. A directory entry is another record then, and hidden_filter_dir takes one, so programs that use
# the library need wide offsets too; times are in no interface.
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  set(NASSHARE_WIDE_OFFSETS _FILE_OFFSET_BITS=64)
  set(NASSHARE_WIDE_OFFSETS_FLAG -D${NASSHARE_WIDE_OFFSETS})
  add_compile_definitions(${NASSHARE_WIDE_OFFSETS} _TIME_BITS=64)
endif()
