// Watches the X server while drags happen: for each new owner of XdndSelection (a drag's start) it
// takes the time until a window named "Quaydrop drop window" is mapped. As the floor any program
// could reach, it maps a 1 by 1 window of its own at the same moment and times that map too.
// Prints one line per drag: "drag <n> quaydrop <ms> floor <ms>" ("-" where no window came).

#include <xcb/xcb.h>
#include <xcb/xfixes.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

using Clock = std::chrono::steady_clock;

xcb_atom_t atom(xcb_connection_t *c, const char *name)
{
    auto *reply = xcb_intern_atom_reply(c, xcb_intern_atom(c, 0, uint16_t(std::strlen(name)), name), nullptr);
    const xcb_atom_t value = reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
    free(reply);
    return value;
}

std::string nameOf(xcb_connection_t *c, xcb_window_t window, xcb_atom_t utf8Name, xcb_atom_t utf8)
{
    for (const auto &[property, type] : {std::pair{utf8Name, utf8}, std::pair{xcb_atom_t(XCB_ATOM_WM_NAME), xcb_atom_t(XCB_ATOM_STRING)}}) {
        auto *reply = xcb_get_property_reply(c, xcb_get_property(c, 0, window, property, type, 0, 256), nullptr);
        if (reply && xcb_get_property_value_length(reply) > 0) {
            std::string name(static_cast<const char *>(xcb_get_property_value(reply)), size_t(xcb_get_property_value_length(reply)));
            free(reply);
            return name;
        }
        free(reply);
    }
    return {};
}

double ms(Clock::duration d) { return std::chrono::duration<double, std::milli>(d).count(); }

} // namespace

int main(int argc, char **argv)
{
    const int drags = argc > 1 ? std::atoi(argv[1]) : 50;
    xcb_connection_t *c = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(c)) {
        std::fprintf(stderr, "no X display\n");
        return 1;
    }
    xcb_screen_t *screen = xcb_setup_roots_iterator(xcb_get_setup(c)).data;
    const xcb_query_extension_reply_t *xfixes = xcb_get_extension_data(c, &xcb_xfixes_id);
    free(xcb_xfixes_query_version_reply(c, xcb_xfixes_query_version(c, 5, 0), nullptr));
    xcb_xfixes_select_selection_input(c, screen->root, atom(c, "XdndSelection"),
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER);
    const uint32_t rootMask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(c, screen->root, XCB_CW_EVENT_MASK, &rootMask);
    const uint32_t floorValues[] = {1};
    const xcb_window_t floorWindow = xcb_generate_id(c);
    xcb_create_window(c, XCB_COPY_FROM_PARENT, floorWindow, screen->root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      screen->root_visual, XCB_CW_OVERRIDE_REDIRECT, floorValues);
    const xcb_atom_t utf8Name = atom(c, "_NET_WM_NAME"), utf8 = atom(c, "UTF8_STRING");
    xcb_flush(c);
    std::printf("ready\n");
    std::fflush(stdout);

    int seen = 0;
    Clock::time_point start;
    double quaydrop = -1, floor = -1;
    bool open = false;
    const auto report = [&] {
        if (!open)
            return;
        std::printf("drag %d quaydrop %s floor %s\n", seen, quaydrop < 0 ? "-" : std::to_string(quaydrop).c_str(),
                    floor < 0 ? "-" : std::to_string(floor).c_str());
        std::fflush(stdout);
        open = false;
    };
    // Done once the last drag has its line.
    while (!(seen == drags && !open)) {
        xcb_generic_event_t *e = xcb_wait_for_event(c);
        if (!e)
            break;
        const uint8_t type = e->response_type & 0x7f;
        if (type == xfixes->first_event + XCB_XFIXES_SELECTION_NOTIFY &&
            reinterpret_cast<xcb_xfixes_selection_notify_event_t *>(e)->owner != XCB_WINDOW_NONE) {
            report();
            start = Clock::now();
            ++seen;
            open = true;
            quaydrop = floor = -1;
            xcb_unmap_window(c, floorWindow);
            xcb_map_window(c, floorWindow);
            xcb_flush(c);
        } else if (type == XCB_MAP_NOTIFY && open) {
            const auto *map = reinterpret_cast<xcb_map_notify_event_t *>(e);
            const double elapsed = ms(Clock::now() - start);
            if (map->window == floorWindow)
                floor = elapsed;
            else if (quaydrop < 0 && nameOf(c, map->window, utf8Name, utf8) == "Quaydrop drop window")
                quaydrop = elapsed;
            if (quaydrop >= 0 && floor >= 0)
                report();
        }
        free(e);
    }
    report();
    xcb_disconnect(c);
    return 0;
}
