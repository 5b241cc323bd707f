#pragma once

class Console;
struct Invocation;

// The commands that act on the desktop rather than on files.

// quaydrop wallpaper FILE | --previous: the wallpaper button's work, and back to the picture before.
int runWallpaperCommand(const Invocation &invocation, Console &console);

// quaydrop pdf-board FILE...: main() opens the window where there is a display; this is the rest.
int runPdfBoardCommand(const Invocation &invocation, Console &console);
