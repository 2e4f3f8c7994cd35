// Prints the state of the first console: what it shows, what its keyboard sends, who switches
// consoles, and whether typed lines are edited and echoed. Usable is "text characters kernel
// lines".
#include <fcntl.h>
#include <linux/kd.h>
#include <linux/vt.h>
#include <sys/ioctl.h>
#include <termios.h>

#include <cstdio>

int main() {
  const int console = open("/dev/tty1", O_RDWR | O_NOCTTY);
  int display = -1, keyboard = -1;
  vt_mode switching{};
  termios line{};
  if (console < 0 || ioctl(console, KDGETMODE, &display) != 0 ||
      ioctl(console, KDGKBMODE, &keyboard) != 0 || ioctl(console, VT_GETMODE, &switching) != 0 ||
      tcgetattr(console, &line) != 0) {
    std::perror("console_state");
    return 1;
  }
  std::printf("%s %s %s %s\n", display == KD_TEXT ? "text" : "graphics",
              keyboard == K_UNICODE || keyboard == K_XLATE ? "characters" : "codes",
              switching.mode == VT_AUTO ? "kernel" : "program",
              (line.c_lflag & ICANON) && (line.c_lflag & ECHO) ? "lines" : "bytes");
}
