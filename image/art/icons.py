"""The icons of the example menu: a white sign on a coloured tile, 24 x 24 pixels."""

BLUE, TEAL, GREEN, AMBER, RED, GREY, VIOLET, NAVY = (
    "#3b82d0", "#1f8f92", "#3f9657", "#c98a1b", "#c9473c", "#6b7a90", "#7f62b4", "#5d7aa6")

LINE = 'fill="none" stroke="#ffffff" stroke-width="1.7" stroke-linecap="round" stroke-linejoin="round"'


def line(d):
    return f'<path d="{d}" {LINE}/>'


def solid(d):
    return f'<path d="{d}" fill="#ffffff"/>'


DISK = ('<ellipse cx="10" cy="6" rx="5" ry="2" fill="none" stroke="#ffffff" stroke-width="1.6"/>'
        + line("M5 6V14C5 15.1 7.2 16 10 16S15 15.1 15 14V6M5 10C5 11.1 7.2 12 10 12S15 11.1 15 10"))

ICONS = {
    "desktop": (BLUE, line("M4 5H16V12.5H4ZM10 12.5V15.5M7 15.5H13")),
    "scan": (TEAL, line("M9 14A5 5 0 1 0 9 4A5 5 0 0 0 9 14ZM12.7 12.7L16 16") + line("M9 6.5V9L10.6 10")),
    "disk": (NAVY, DISK),
    "raid": (NAVY, line("M4 4.5H16V8H4ZM4 8H16V11.7H4ZM4 11.7H16V15.4H4Z") +
             solid("M6 5.6H7.2V6.8H6ZM6 9.2H7.2V10.4H6ZM6 13H7.2V14.2H6Z")),
    "network": (VIOLET, line("M8 4H12V7.5H8ZM4 12.5H8V16H4ZM12 12.5H16V16H12ZM10 7.5V10M6 12.5V10H14V12.5")),
    "wireless": (VIOLET, line("M3.8 8.5A9 9 0 0 1 16.2 8.5M6 11.2A5.8 5.8 0 0 1 14 11.2") +
                 '<circle cx="10" cy="14.6" r="1.6" fill="#ffffff"/>'),
    "recover": (GREEN, line("M4.5 10A5.5 5.5 0 1 1 6.2 14M4.2 6.2V10.2H8.2") + line("M10 7.2V10.2L12 11.6")),
    "usb": (GREEN, line("M10 16V4.6M7.8 6.6L10 4L12.2 6.6M10 12.4L6.4 10.6V8.6M10 10.8L13.6 9V7") +
            '<circle cx="10" cy="16" r="1.7" fill="#ffffff"/>'),
    "shell": (NAVY, line("M4.5 6L8.5 9.8L4.5 13.6M10 14H15.5")),
    "log": (GREY, line("M5.5 3.8H12L14.8 6.6V16.2H5.5ZM7.8 8.6H12.4M7.8 11H12.4M7.8 13.4H11")),
    "restart": (AMBER, line("M15.2 8.2A5.6 5.6 0 1 0 15.4 12M15.6 4.4V8.4H11.6")),
    "off": (RED, line("M6.4 6.2A5.4 5.4 0 1 0 13.6 6.2M10 3.8V9.6")),
    "lock": (AMBER, line("M5 9.2H15V16H5ZM7 9.2V7A3 3 0 0 1 13 7V9.2M10 12V13.6")),
    "copy": (TEAL, line("M4.2 4.2H11V11H4.2ZM13.4 8.6H15.8V15.8H8.6V13.4")),
    "erase": (RED, line("M4.6 6H15.4M8 6V4.2H12V6M6 6L6.8 16H13.2L14 6M8.8 8.6V13.4M11.2 8.6V13.4")),
    "memory": (GREEN, line("M4 6H16V13H4ZM6.4 13V15.4M10 13V15.4M13.6 13V15.4M7 8.2V10.8M10 8.2V10.8M13 8.2V10.8")),
    "language": (VIOLET, line("M10 4A6 6 0 1 0 10 16A6 6 0 0 0 10 4ZM4 10H16M10 4C7.2 6.6 7.2 13.4 10 16C12.8 13.4 12.8 6.6 10 4")),
    "info": (BLUE, line("M10 9.4V14.4") + '<circle cx="10" cy="5.9" r="1.2" fill="#ffffff"/>'),
}


def svg(name):
    color, sign = ICONS[name]
    return ('<svg xmlns="http://www.w3.org/2000/svg" width="24" height="24"><g transform="scale(1.2)">'
            f'<rect width="20" height="20" rx="5" fill="{color}"/>{sign}</g></svg>')
