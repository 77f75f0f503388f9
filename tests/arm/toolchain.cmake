# ARM with hardware floating point (Debian's armhf): char is unsigned; long, pointers and time have 32 bits.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(CMAKE_C_COMPILER arm-linux-gnueabihf-gcc)
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)
set(CMAKE_C_FLAGS_INIT -O2)
set(CMAKE_CXX_FLAGS_INIT -O2)
