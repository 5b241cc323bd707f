#pragma once

class Console;
struct Invocation;

int runResizeCommand(const Invocation &invocation, Console &console);
int runConvertCommand(const Invocation &invocation, Console &console);
int runPdfToImagesCommand(const Invocation &invocation, Console &console);
int runImagesToPdfCommand(const Invocation &invocation, Console &console);
// The editor's quarter turns and crop, saved as "_Quaydrop-NAME.EXT".
int runRotateCommand(const Invocation &invocation, Console &console);
int runCropCommand(const Invocation &invocation, Console &console);
