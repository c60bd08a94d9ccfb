add_compile_options(
  -Wall -Wextra -Wpedantic -Werror -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
  -Wnon-virtual-dtor -Woverloaded-virtual -Wduplicated-cond -Wlogical-op
  -Wcast-align -Wunused)

# An operation that awaits another hands over by a tail call, also where nothing else is optimised:
# otherwise a long loop of operations that do not wait would use up the stack.
add_compile_options($<$<NOT:$<CONFIG:Release>>:-foptimize-sibling-calls>)

# gcc 12 sees overlapping copies in sums of short strings that it inlines at -O3; there are none.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  add_compile_options(-Wno-restrict)
endif()
