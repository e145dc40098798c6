// SPDX-License-Identifier: MIT
// A module that does what the environment variable MISBEHAVIOUR says, "PHASE ACT": where nothing is
// said, it adds one point to the foreground.
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

#include "hostapi/mesh_edit.h"
#include "hostapi/messages.h"
#include "hostapi/module.h"
#include "hostapi/panel.h"

namespace {

std::string act_of(const std::string& phase)
{
    const char* const set = std::getenv("MISBEHAVIOUR");
    const std::string wanted = set != nullptr ? set : "";
    return wanted.starts_with(phase + " ") ? wanted.substr(phase.size() + 1) : "";
}

/// Calls itself as often as is asked for; more than any stack has room for.
int overflow_stack(int times)
{
    volatile char room[65536];
    room[0] = static_cast<char>(times);
    return times == 0 ? 0 : overflow_stack(times - 1) + room[0];
}

/// A child process of the module's own may end as it likes.
void end_child(void (*end)(int))
{
    const pid_t child = ::fork();
    if (child == 0)
        end(0);
    int status = 0;
    if (::waitpid(child, &status, 0) != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
        std::abort();
}

void act(const char* phase)
{
    const std::string what = act_of(phase);
    if (what == "exit")
        std::exit(0);
    if (what == "exit 3")
        std::exit(3);
    if (what == "exit on a thread")
        std::thread([] { std::exit(0); }).join();
    if (what == "_exit")
        ::_exit(0);
    if (what == "_Exit")
        std::_Exit(0);
    if (what == "quick_exit")
        std::quick_exit(0);
    if (what == "abort")
        std::abort();
    if (what == "terminate")
        std::terminate();
    if (what == "throw")
        throw std::runtime_error("thrown");
    if (what == "SIGSEGV")
        ::raise(SIGSEGV);
    if (what == "SIGFPE")
        ::raise(SIGFPE);
    if (what == "stack overflow")
        (void)overflow_stack(1 << 30);
    if (what == "children") {
        end_child(std::exit);
        end_child(::_exit);
    }
    if (what == "leave a thread") {
        std::thread([] {
            for (volatile bool go_on = true; go_on;) {
            }
        }).detach();
    }
    if (what == "loop") {
        (void)!::write(STDERR_FILENO, "looping\n", 8);
        for (volatile bool go_on = true; go_on;) {
        }
    }
}

/// What WORDS says, behind a word that tells where.
std::string words(const char* where)
{
    const char* const set = std::getenv("WORDS");
    return where + std::string(set != nullptr ? set : "");
}

/// Messages of all kinds; false once the run is to end.
bool speak(GlobalFunc* global, const std::string& what)
{
    auto* const messages = static_cast<LWMessageFuncs*>(global(LWMESSAGEFUNCS_GLOBAL, 0));
    if (what == "say") {
        messages->info(words("info").c_str(), words("second").c_str());
        (void)messages->yesNo(words("title").c_str(), words("question").c_str(), words("").c_str());
    }
    if (what == "complain")
        messages->error(words("error").c_str(), words("second").c_str());
    if (what == "throw")
        throw std::runtime_error(words("exception"));
    return what != "complain";
}

/// Ends, or does not end, an edit in ways that are no success.
int end_badly(MeshEditOp* edit, const std::string& what)
{
    if (what == "leave the edit open")
        return 0;
    if (what == "give the edit up")
        edit->done(edit->state, 12345, 0);
    if (what == "return a code") {
        edit->done(edit->state, EDERR_NONE, 0);
        return 12;
    }
    return 0;
}

int scan_callback(void*, const EDPolygonInfo*)
{
    act("scan");
    return 0;
}

/// Shows a panel whose controls have the settings' names and other kinds.
bool show_panel(GlobalFunc* global, const char* control_class)
{
    auto* const panels = static_cast<LWXPanelFuncs*>(global(LWXPANELFUNCS_GLOBAL, 0));
    const LWXPanelControl controls[] = {{1, "Number of Clones", control_class},
                                        {0, nullptr, nullptr}};
    const LWXPanelID panel = panels->create(LWXP_FORM, controls);
    if (std::strcmp(control_class, "iPopChoice") == 0) {
        const char* const list[] = {"none", "one", nullptr};
        LWXPanelHint hints[2] = {};
        hints[0].kind = XpSTRLIST;
        hints[0].id = 1;
        hints[0].list = list;
        hints[1].kind = XpEND;
        panels->hint(panel, 0, hints);
    }
    return panels->post(panel) != 0;
}

/// Gives a list of the panel one more entry again and again, without end.
[[noreturn]] void add_list_entries_for_ever(GlobalFunc* global)
{
    auto* const panels = static_cast<LWXPanelFuncs*>(global(LWXPANELFUNCS_GLOBAL, 0));
    const LWXPanelControl controls[] = {{1, "List", "iPopChoice"}, {0, nullptr, nullptr}};
    const LWXPanelID panel = panels->create(LWXP_FORM, controls);
    const std::string entry(1 << 22, 'e');
    std::vector<const char*> list;
    for (bool told = false;;) {
        list.insert(list.end(), {entry.c_str(), nullptr});
        LWXPanelHint hints[2] = {};
        hints[0].kind = XpSTRLIST;
        hints[0].id = 1;
        hints[0].list = list.data();
        hints[1].kind = XpEND;
        panels->hint(panel, 0, hints);
        list.pop_back();
        if (!std::exchange(told, true))
            (void)!::write(STDERR_FILENO, "looping\n", 8);
    }
}

int run(long, GlobalFunc* global, void* local, void*)
{
    act("run");
    const std::string what = act_of("run");
    if (what == "do nothing" || !speak(global, what))
        return 0;
    if (what == "list without end")
        add_list_entries_for_ever(global);
    if (what.starts_with("panel ") && !show_panel(global, what.c_str() + 6))
        return 0;
    MeshEditOp* const edit = reinterpret_cast<MeshEditBegin*>(local)(0, 0, OPSEL_USER);
    edit->polyScan(edit->state, &scan_callback, nullptr, OPLYR_FG);
    if (what == "finish without a change") {
        edit->done(edit->state, EDERR_NONE, 0);
        return 0;
    }
    const double position[3] = {1, 2, 3};
    const LWPntID point = edit->addPoint(edit->state, position);
    if (what.starts_with("add a polygon of type ")) {
        const auto type = static_cast<LWID>(std::strtoul(what.c_str() + 22, nullptr, 16));
        edit->addPoly(edit->state, type, nullptr, nullptr, 1, &point);
    }
    if (what == "give up, then finish") {
        edit->done(edit->state, EDERR_BADARGS, 0);
        MeshEditOp* const second = reinterpret_cast<MeshEditBegin*>(local)(0, 0, OPSEL_USER);
        second->addPoint(second->state, position);
        second->done(second->state, EDERR_NONE, 0);
        return 0;
    }
    if (what == "leave the edit open" || what == "give the edit up" || what == "return a code")
        return end_badly(edit, what);
    edit->done(edit->state, EDERR_NONE, 0);
    return 0;
}

void* start()
{
    act("startup");
    return reinterpret_cast<void*>(4);
}

void stop(void*) { act("shutdown"); }

const struct Loading {
    Loading() { act("loading"); }
    ~Loading() { act("unloading"); }
} loading;

const ServerRecord servers[] = {{"MeshDataEdit", "Dastrel", &run, nullptr},
                                {nullptr, nullptr, nullptr, nullptr}};

} // namespace

extern "C" __attribute__((visibility("default"))) const ModuleDescriptor _mod_descrip = {
    MODULE_SYNC_WORD, MODULE_SYSTEM_VERSION, MODULE_MACHINE_WORD, &start, &stop, servers};
