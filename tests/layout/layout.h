// The layout of a public record as a table, checked by the compiler: the type of each field, and its offset
// on 32 and on 64 bits. Host programs are built against it. Needs no C library, so that a compiler checks it
// for a processor of which the machine has nothing else.
#pragma once

#include <stddef.h>
#include <stdint.h>

#define WIDE (sizeof(void *) == 8)

#define FIELD(record, field, type, offset32, offset64)                                                       \
  _Static_assert(__builtin_types_compatible_p(__typeof__(((struct record *)0)->field), type),                \
                 #record "." #field " is no " #type);                                                        \
  _Static_assert(offsetof(struct record, field) == (WIDE ? (offset64) : (offset32)),                         \
                 #record "." #field " lies elsewhere")

#define RECORD_SIZE(record, size32, size64)                                                                  \
  _Static_assert(sizeof(struct record) == (WIDE ? (size64) : (size32)), #record " has another size")

// An object of a header has that type.
#define OBJECT(object, type)                                                                                 \
  _Static_assert(__builtin_types_compatible_p(__typeof__(object), type), #object " is no " #type)
