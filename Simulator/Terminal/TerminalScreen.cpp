#include "Simulator/Terminal/TerminalScreen.h"

#include <array>
#include <clocale>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cwchar>
#include <stdexcept>

#include <curses.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <term.h>
#include <termios.h>
#include <unistd.h>

// Capabilities of terminals under these names.
#undef columns
#undef lines
#undef tab

namespace simulator {

namespace {

Size windowSize() {
    winsize window{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &window) != 0)
        return {};
    return {window.ws_col, window.ws_row};
}

/// Ctrl-S would hold up the whole simulator together with its output.
void turnOffFlowControl() {
    termios modes{};
    if (tcgetattr(STDIN_FILENO, &modes) != 0)
        return;
    modes.c_iflag &= ~static_cast<tcflag_t>(IXON);
    tcsetattr(STDIN_FILENO, TCSANOW, &modes);
    def_prog_mode();
}

void prepareColors() {
    if (!has_colors())
        return;
    start_color();
    use_default_colors();
    constexpr std::array<short, 5> colors = {COLOR_RED, COLOR_GREEN, COLOR_YELLOW, COLOR_BLUE,
                                             COLOR_CYAN};
    short pair = 1;
    for (const short color : colors)
        init_pair(pair++, color, -1);
}

attr_t attributes(const Style& style) {
    return (style.isBold ? WA_BOLD : 0U) | (style.isDim ? WA_DIM : 0U) |
           (style.isReversed ? WA_REVERSE : 0U);
}

void showCell(int column, int row, const Cell& cell) {
    std::array<wchar_t, CCHARW_MAX + 1> characters{};
    for (std::size_t index = 0; index < cell.characters.size() && index < CCHARW_MAX; ++index)
        characters[index] = static_cast<wchar_t>(cell.characters[index]);
    cchar_t content{};
    const auto pair = static_cast<short>(has_colors() ? cell.style.color : Color::plain);
    setcchar(&content, characters.data(), attributes(cell.style), pair, nullptr);
    mvadd_wch(row, column, &content);
}

std::optional<Key> mouseKey() {
    MEVENT event{};
    if (getmouse(&event) != OK)
        return std::nullopt;
    const auto at = [&event](Key::Kind kind) {
        return Key{kind, 0, event.x, event.y};
    };
    if (event.bstate & (BUTTON1_PRESSED | BUTTON1_CLICKED))
        return at(Key::Kind::click);
    if (event.bstate & BUTTON4_PRESSED)
        return at(Key::Kind::wheelUp);
    if (event.bstate & BUTTON5_PRESSED)
        return at(Key::Kind::wheelDown);
    return std::nullopt;
}

std::optional<Key> functionKey(wint_t code) {
    struct Meaning {
        wint_t code;
        Key::Kind kind;
    };
    static constexpr Meaning meanings[] = {
        {KEY_ENTER, Key::Kind::enter},
        {KEY_BTAB, Key::Kind::backTab},
        {KEY_UP, Key::Kind::up},
        {KEY_DOWN, Key::Kind::down},
        {KEY_LEFT, Key::Kind::left},
        {KEY_RIGHT, Key::Kind::right},
        {KEY_PPAGE, Key::Kind::pageUp},
        {KEY_NPAGE, Key::Kind::pageDown},
        {KEY_HOME, Key::Kind::home},
        {KEY_END, Key::Kind::end},
        {KEY_BACKSPACE, Key::Kind::backspace},
        {KEY_DC, Key::Kind::remove},
    };
    if (code == KEY_MOUSE)
        return mouseKey();
    for (const auto& meaning : meanings)
        if (meaning.code == code)
            return Key{meaning.kind, 0, 0, 0};
    return std::nullopt;
}

Key characterKey(wint_t character) {
    switch (character) {
    case '\r':
    case '\n':
        return {Key::Kind::enter, 0, 0, 0};
    case '\t':
        return {Key::Kind::tab, 0, 0, 0};
    case 0x1B:
        return {Key::Kind::escape, 0, 0, 0};
    case '\b':
    case 0x7F:
        return {Key::Kind::backspace, 0, 0, 0};
    default:
        return {Key::Kind::character, static_cast<char32_t>(character), 0, 0};
    }
}

} // namespace

std::string TerminalScreen::obstacle() {
    int error = 0;
    if (setupterm(nullptr, STDOUT_FILENO, &error) != OK)
        return "nothing is known about this kind of terminal";
    char name[] = "cup";
    const char* const moving = tigetstr(name);
    del_curterm(cur_term);
    if (!moving || reinterpret_cast<std::intptr_t>(moving) == -1)
        return "this kind of terminal shows lines only";
    const auto size = windowSize();
    if (size.columns < smallestWindow.columns || size.rows < smallestWindow.rows)
        return "the window is smaller than " + std::to_string(smallestWindow.columns) + "×" +
               std::to_string(smallestWindow.rows);
    return "";
}

void TerminalScreen::Deleter::operator()(void* screen) const {
    endwin();
    delscreen(static_cast<SCREEN*>(screen));
}

TerminalScreen::TerminalScreen() {
    // The texts are UTF-8 whatever the locale says.
    std::setlocale(LC_CTYPE, "C.UTF-8");
    screen_.reset(newterm(nullptr, stdout, stdin));
    if (!screen_)
        throw std::runtime_error("the terminal cannot show the device");
    set_escdelay(25);
    cbreak();
    noecho();
    nonl();
    keypad(stdscr, true);
    nodelay(stdscr, true);
    mouseinterval(0);
    mousemask(BUTTON1_PRESSED | BUTTON1_CLICKED | BUTTON4_PRESSED | BUTTON5_PRESSED, nullptr);
    prepareColors();
    turnOffFlowControl();
}

TerminalScreen::~TerminalScreen() = default;

Size TerminalScreen::size() const {
    return {getmaxx(stdscr), getmaxy(stdscr)};
}

void TerminalScreen::show(const Frame& frame) {
    const auto& canvas = frame.canvas;
    for (int row = 0; row < canvas.size().rows; ++row)
        for (int column = 0; column < canvas.size().columns; ++column)
            if (const auto& cell = canvas.cell(column, row); !cell.characters.empty())
                showCell(column, row, cell);
    curs_set(frame.cursor ? 1 : 0);
    if (frame.cursor)
        move(frame.cursor->row, frame.cursor->column);
    refresh();
}

std::optional<Key> TerminalScreen::takeKey() {
    wint_t code = 0;
    for (int result = get_wch(&code); result != ERR; result = get_wch(&code)) {
        constexpr wint_t redraw = 'L' - '@';
        if (result == KEY_CODE_YES) {
            if (auto key = functionKey(code))
                return key;
        } else if (code == redraw) {
            forgetContents();
        } else {
            return characterKey(code);
        }
    }
    return std::nullopt;
}

bool TerminalScreen::isHungUp() const {
    pollfd polled{STDIN_FILENO, POLLIN, 0};
    return poll(&polled, 1, 0) > 0 && (polled.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
}

void TerminalScreen::resize() {
    const auto window = windowSize();
    if (window.columns > 0 && window.rows > 0)
        resizeterm(window.rows, window.columns);
    forgetContents();
}

void TerminalScreen::forgetContents() {
    clearok(curscr, true);
}

void TerminalScreen::suspend() {
    endwin();
    // The signal came through a descriptor; now it does what it is there for.
    ::signal(SIGTSTP, SIG_DFL);
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGTSTP);
    raise(SIGTSTP);
    sigprocmask(SIG_UNBLOCK, &set, nullptr);
    sigprocmask(SIG_BLOCK, &set, nullptr);
    resize();
}

} // namespace simulator
