// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Starts a program on an X server without a window manager, waits for its first window and kills it.
//
//     bench_start COMMAND [ARGUMENT...]
//
// Prints the milliseconds from the start until the server has mapped the window, and the resident memory in bytes half
// a second later, when everything is painted.
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <poll.h>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <xcb/xcb.h>

namespace {

using Clock = std::chrono::steady_clock;

[[noreturn]] void Fail(const char *reason, pid_t process)
{
    std::fprintf(stderr, "%s\n", reason);
    kill(process, SIGKILL);
    std::exit(1);
}

void WaitForFirstWindow(xcb_connection_t *connection, pid_t process)
{
    pollfd server{xcb_get_file_descriptor(connection), POLLIN, 0};
    for (const Clock::time_point end = Clock::now() + std::chrono::seconds(20); Clock::now() < end;) {
        while (xcb_generic_event_t *const event = xcb_poll_for_event(connection)) {
            const int type = event->response_type & 0x7F;
            std::free(event);
            if (type == XCB_MAP_NOTIFY)
                return;
        }
        if (xcb_connection_has_error(connection))
            Fail("lost the connection to the X server", process);
        if (waitpid(process, nullptr, WNOHANG) == process)
            Fail("the program ended without showing a window", process);
        poll(&server, 1, 100);
    }
    Fail("timed out waiting for a window", process);
}

long ResidentBytes(pid_t process)
{
    std::ifstream file("/proc/" + std::to_string(process) + "/statm");
    long size = 0;
    long resident = 0;
    file >> size >> resident;
    return resident * sysconf(_SC_PAGESIZE);
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc < 2)
        return 2;
    xcb_connection_t *const connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection)) {
        std::fputs("cannot connect to an X server\n", stderr);
        return 1;
    }
    const xcb_screen_t *const screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    const uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection, screen->root, XCB_CW_EVENT_MASK, &mask);
    std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr)); // waits for the server

    const Clock::time_point start = Clock::now();
    const pid_t process = fork();
    if (process == 0) {
        execvp(argv[1], argv + 1);
        _exit(127);
    }
    WaitForFirstWindow(connection, process);
    const std::chrono::duration<double, std::milli> elapsed = Clock::now() - start;
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    std::printf("%.3f %ld\n", elapsed.count(), ResidentBytes(process));
    kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
    xcb_disconnect(connection);
    return 0;
}
