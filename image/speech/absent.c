/* What the speech synthesizer and the braille program are linked with but never use here, at a
   thousandth of the size: a desktop's sound server, which does not answer, and ICU's data, which has no
   names of letters. */
#ifdef ZEL_SOUND_SERVER
void* pa_simple_new(void) { return 0; }
void pa_simple_free(void) {}
int pa_simple_write(void) { return -1; }
int pa_simple_drain(void) { return -1; }
int pa_simple_flush(void) { return -1; }
unsigned pa_bytes_per_second(void) { return 0; }
const char* pa_strerror(void) { return ""; }
#else
/* A data file without entries, as ICU's own programs make it: sizes, "byte order", kind, no table. */
const struct {
  unsigned short headerSize;
  unsigned char magic[2];
  unsigned short infoSize, reserved;
  unsigned char isBigEndian, charset, charSize, reserved2;
  unsigned char format[4], formatVersion[4], dataVersion[4];
  unsigned char rest[8];
  unsigned count, reserved3;
} icudt72_dat __attribute__((aligned(16))) = {
    32, {0xda, 0x27}, 20, 0, 0, 0, 2, 0, {'T', 'o', 'C', 'P'}, {1, 0, 0, 0}, {0, 0, 0, 0}, {0}, 0, 0};
#endif
