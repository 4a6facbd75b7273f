#include "cli/console.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <histedit.h>
#include <unistd.h>

namespace metrify {

namespace {

constexpr int history_size = 1000;

std::string history_file() {
    const char* home = std::getenv("HOME"); // NOLINT(concurrency-mt-unsafe): no other thread is there yet
    return home == nullptr ? std::string() : std::string(home) + "/.metrify_history";
}

struct edit_line_end {
    void operator()(EditLine* editor) const { el_end(editor); }
};
struct history_end_ {
    void operator()(History* history) const { ::history_end(history); }
};

} // namespace

void use_binary_streams() {}

bool is_interactive() {
    return isatty(STDIN_FILENO) != 0 && isatty(STDOUT_FILENO) != 0;
}

struct line_reader::terminal {
    std::unique_ptr<EditLine, edit_line_end> editor;
    std::unique_ptr<History, history_end_> history;
    std::string file = history_file();
    std::string prompt;
    bool interrupted = false;

    static terminal& of(EditLine* el) {
        void* data = nullptr;
        el_get(el, EL_CLIENTDATA, &data);
        return *static_cast<terminal*>(data);
    }

    static char* prompt_of(EditLine* el) { return of(el).prompt.data(); }

    // Ctrl-C ends the line, and what has been typed goes out with it.
    static unsigned char interrupt(EditLine* el, int) {
        of(el).interrupted = true;
        return CC_NEWLINE;
    }

    void remember(const std::string& line) {
        HistEvent event;
        ::history(history.get(), &event, H_ENTER, line.c_str());
        // Saved line by line: nothing typed is lost, however the session ends.
        if (!file.empty())
            ::history(history.get(), &event, H_SAVE, file.c_str());
    }
};

line_reader::line_reader() : terminal_(std::make_unique<terminal>()) {
    terminal& t = *terminal_;
    t.history.reset(history_init());
    HistEvent event;
    ::history(t.history.get(), &event, H_SETSIZE, history_size);
    ::history(t.history.get(), &event, H_SETUNIQUE, 1);
    if (!t.file.empty())
        ::history(t.history.get(), &event, H_LOAD, t.file.c_str());

    t.editor.reset(el_init("metrify", stdin, stdout, stderr));
    EditLine* editor = t.editor.get();
    el_set(editor, EL_CLIENTDATA, &t);
    el_set(editor, EL_PROMPT, &terminal::prompt_of);
    el_set(editor, EL_EDITOR, "emacs");
    el_set(editor, EL_HIST, ::history, t.history.get());
    // While a line is edited Ctrl-C is a key. At other times it has no effect: a session isn't lost to it.
    el_set(editor, EL_SETTY, "-d", "-isig", nullptr);
    // A prompt stands before the line is edited: what is typed in between waits, Ctrl-C with it.
    el_set(editor, EL_SETTY, "-x", "-isig", nullptr);
    el_set(editor, EL_ADDFN, "interrupt", "Give the line up", &terminal::interrupt);
    el_set(editor, EL_BIND, "^C", "interrupt", nullptr);
    (void)std::signal(SIGINT, SIG_IGN);
}

line_reader::~line_reader() = default;

line_reader::outcome line_reader::read(std::string_view prompt, std::string& line) {
    terminal& t = *terminal_;
    t.prompt = prompt;
    t.interrupted = false;
    int count = 0;
    const char* text = el_gets(t.editor.get(), &count);
    line.assign(text == nullptr ? "" : text, text == nullptr ? 0 : static_cast<std::size_t>(count));
    while (!line.empty() && line.back() == '\n')
        line.pop_back();
    if (text == nullptr && !t.interrupted)
        return outcome::end;
    if (!line.empty())
        t.remember(line);
    if (!t.interrupted)
        return outcome::line;
    std::fputs("^C\n", stdout);
    return outcome::interrupted;
}

} // namespace metrify
