# One place for how every target of this project is compiled.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_OBJCXX_STANDARD 20)
set(CMAKE_OBJCXX_STANDARD_REQUIRED ON)
set(CMAKE_OBJCXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
                    -Wcast-align -Wformat=2
                    # Members that are left out have their defaults, which is what they are for.
                    -Wno-missing-field-initializers)
if(CMAKE_UNITY_BUILD)
  # Files compiled as one share their unnamed namespaces: what looks like hiding is none in a file.
  add_compile_options(-Wno-shadow)
endif()
if(QUILLON_WARNINGS_AS_ERRORS)
  add_compile_options(-Werror)
endif()
add_compile_definitions(QT_NO_KEYWORDS QT_NO_CAST_FROM_BYTEARRAY QT_NO_CAST_TO_ASCII)

if(QUILLON_SANITIZE)
  add_compile_options(-fsanitize=${QUILLON_SANITIZE} -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${QUILLON_SANITIZE})
  add_compile_definitions(QUILLON_SANITIZED) # what compilers define themselves differs
endif()
if(QUILLON_COVERAGE)
  add_compile_options(--coverage -O0)
  add_link_options(--coverage)
endif()
if(QUILLON_FUZZ)
  # Coverage that steers the fuzzers, for them and the libraries that they test.
  set(QUILLON_FUZZ_OPTIONS -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all)
  add_link_options(-fsanitize=address,undefined)
endif()
