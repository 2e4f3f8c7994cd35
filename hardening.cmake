# What makes faults in memory hard to use, for every program of the project and for what the image
# links into its own: set as lists of flags, since the tool chain of the image needs them, too.
#
# Addresses are the kernel's to choose, but for the program of the image (ZEL_ADDRESS), and tables of
# them are read-only before the program starts; overrun buffers and jumps to where no function begins
# end it. tools/check-hardening looks whether a program has all that.
set(ZEL_HARDENED_CODE -fstack-protector-strong -fstack-clash-protection)
set(ZEL_HARDENED_LINK -Wl,-z,relro,-z,now,-z,noexecstack)

# Indirect jumps are checked by 64-bit processors only; the older ones among the 32-bit do not even
# know the instruction.
if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64)$")
  list(APPEND ZEL_HARDENED_CODE -fcf-protection=full)
endif()

# Checks in the C library's functions need an optimiser, and would hide faults from sanitizers.
set(ZEL_CHECKED_CALLS -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3)
