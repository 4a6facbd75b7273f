#include "cli/console.h"
#include "cli/typed_text.h"

#include <algorithm>
#include <cerrno>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <histedit.h>
#include <unistd.h>

namespace metrify {

namespace {

constexpr int history_size = 1000;

std::string history_file() {
    const std::string home = environment_variable("HOME");
    return home.empty() ? home : home + "/.metrify_history";
}

struct edit_line_end {
    void operator()(EditLine* editor) const { el_end(editor); }
};
struct history_end_ {
    void operator()(HistoryW* history) const { ::history_wend(history); }
};

// The line editor shows characters of the terminal's encoding only in a locale that uses it. Nothing else in
// the program depends on this category.
void use_encoding_of_terminal() {
    std::setlocale(LC_CTYPE, ""); // NOLINT(concurrency-mt-unsafe): there is no other thread yet
    if (MB_CUR_MAX == 1)
        std::setlocale(LC_CTYPE, "C.UTF-8"); // NOLINT(concurrency-mt-unsafe)
}

// By default the editor binds commands to these codes, which are characters in the terminal's encoding.
void bind_characters_above_ascii(EditLine* editor) {
    for (wchar_t code = 0x80; code <= 0xFF; ++code) {
        const wchar_t key[] = {code, L'\0'};
        el_wset(editor, EL_BIND, key, L"ed-insert", nullptr);
    }
}

} // namespace

void use_binary_streams() {}

std::vector<std::string> program_arguments(int argc, const char* const* argv) {
    return {argv + std::min(argc, 1), argv + argc};
}

std::string environment_variable(const char* name) {
    const char* const value =
        std::getenv(name); // NOLINT(concurrency-mt-unsafe): there is no other thread yet
    return value == nullptr ? std::string() : std::string(value);
}

bool is_interactive() {
    return isatty(STDIN_FILENO) != 0 && isatty(STDOUT_FILENO) != 0;
}

bool is_error_shown_to_person() {
    return isatty(STDERR_FILENO) != 0;
}

struct line_reader::terminal {
    std::unique_ptr<EditLine, edit_line_end> editor;
    std::unique_ptr<HistoryW, history_end_> history;
    std::string file = history_file();
    std::string prompt;
    bool interrupted = false;
    typed_text typed;
    completer complete;
    std::wstring characters; // decoded and not yet read by the editor

    static terminal& of(EditLine* el) {
        void* data = nullptr;
        el_get(el, EL_CLIENTDATA, &data);
        return *static_cast<terminal*>(data);
    }

    static char* prompt_of(EditLine* el) { return of(el).prompt.data(); }

    // Ctrl-C ends the line; read() returns the text typed so far.
    static unsigned char interrupt(EditLine* el, int) {
        of(el).interrupted = true;
        return CC_NEWLINE;
    }

    // Tab inserts what the completion is sure of, or else shows the candidates.
    static unsigned char complete_at_cursor(EditLine* el, int) {
        terminal& t = of(el);
        const LineInfoW* const line = el_wline(el);
        const std::wstring_view before(line->buffer, static_cast<std::size_t>(line->cursor - line->buffer));
        const completion found = t.complete ? t.complete(typed_text::bytes_of(before)) : completion();
        if (!found.inserted.empty()) {
            const std::wstring inserted(found.inserted.begin(), found.inserted.end()); // names are ASCII
            return el_winsertstr(el, inserted.c_str()) == 0 ? CC_REFRESH : CC_ERROR;
        }
        if (found.candidates.size() < 2)
            return CC_ERROR;
        constexpr std::size_t width = 80;
        std::fputs(("\n" + candidate_table(found.candidates, width)).c_str(), stdout);
        return CC_REDISPLAY;
    }

    // The editor's default function drops bytes that are no character.
    static int read_character(EditLine* el, wchar_t* character) {
        terminal& t = of(el);
        while (t.characters.empty()) {
            char byte = '\0';
            const ssize_t count = ::read(STDIN_FILENO, &byte, 1);
            if (count > 0)
                t.typed.take(byte, t.characters);
            else if (count == 0 || errno != EINTR)
                return static_cast<int>(count);
        }
        *character = t.characters.front();
        t.characters.erase(0, 1);
        return 1;
    }

    void remember(const std::wstring& line) {
        HistEventW event;
        ::history_w(history.get(), &event, H_ENTER, line.c_str());
        // Saved after each line, so that nothing is lost if the session ends abnormally.
        if (!file.empty())
            ::history_w(history.get(), &event, H_SAVE, file.c_str());
    }
};

line_reader::line_reader() : terminal_(std::make_unique<terminal>()) {
    use_encoding_of_terminal();
    terminal& t = *terminal_;
    t.history.reset(history_winit());
    HistEventW event;
    ::history_w(t.history.get(), &event, H_SETSIZE, history_size);
    ::history_w(t.history.get(), &event, H_SETUNIQUE, 1);
    if (!t.file.empty())
        ::history_w(t.history.get(), &event, H_LOAD, t.file.c_str());

    t.editor.reset(el_init("metrify", stdin, stdout, stderr));
    EditLine* editor = t.editor.get();
    el_set(editor, EL_CLIENTDATA, &t);
    el_set(editor, EL_PROMPT, &terminal::prompt_of);
    el_set(editor, EL_EDITOR, "emacs");
    el_wset(editor, EL_GETCFN, &terminal::read_character);
    el_wset(editor, EL_HIST, ::history_w, t.history.get());
    bind_characters_above_ascii(editor);
    // While a line is edited Ctrl-C is a key. While an entry is run it is a signal, which ends the run. At
    // other times the signal is ignored, so that it doesn't end the session.
    el_set(editor, EL_SETTY, "-d", "-isig", nullptr);
    el_set(editor, EL_ADDFN, "interrupt", "Discard the line", &terminal::interrupt);
    el_set(editor, EL_BIND, "^C", "interrupt", nullptr);
    el_set(editor, EL_ADDFN, "complete", "Complete a name", &terminal::complete_at_cursor);
    el_set(editor, EL_BIND, "^I", "complete", nullptr);
    (void)std::signal(SIGINT, SIG_IGN);
}

line_reader::~line_reader() = default;

void line_reader::complete_with(completer complete) {
    terminal_->complete = std::move(complete);
}

line_reader::outcome line_reader::read(std::string_view prompt, std::string& line) {
    terminal& t = *terminal_;
    t.prompt = prompt;
    t.interrupted = false;
    int count = 0;
    const wchar_t* text = el_wgets(t.editor.get(), &count);
    std::wstring typed(text == nullptr ? L"" : text, text == nullptr ? 0 : static_cast<std::size_t>(count));
    while (!typed.empty() && typed.back() == L'\n')
        typed.pop_back();
    line = typed_text::bytes_of(typed);
    if (text == nullptr && !t.interrupted)
        return outcome::end;
    if (!typed.empty())
        t.remember(typed);
    if (!t.interrupted)
        return outcome::line;
    std::fputs("^C\n", stdout);
    return outcome::interrupted;
}

} // namespace metrify
