add_compile_options(
  -Wall -Wextra -Wpedantic -Werror -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
  -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align -Wunused)

# An operation that awaits another hands over by a tail call, also where nothing else is optimised:
# otherwise a long loop of operations that do not wait would use up the stack.
add_compile_options($<$<NOT:$<CONFIG:Release>>:-foptimize-sibling-calls>)

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # gcc 12 sees overlapping copies in sums of short strings that it inlines at -O3; there are none.
  add_compile_options(-Wduplicated-cond -Wlogical-op -Wno-restrict)
endif()
