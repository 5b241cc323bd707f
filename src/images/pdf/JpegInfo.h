#pragma once

#include <QByteArray>
#include <optional>

// What a PDF needs to embed a JPEG untouched: its frame header, and whether an Adobe marker says its
// CMYK samples are stored inverted.
struct JpegInfo
{
    int width = 0;
    int height = 0;
    int components = 0; // 1 grey, 3 colour, 4 CMYK
    int precision = 8;
    bool adobeInverted = false;

    // Nothing for data that is no baseline or progressive JPEG of 8-bit samples.
    static std::optional<JpegInfo> parse(const QByteArray &data);
    // Whether the last scan is followed by its end marker: a file cut short ends inside a scan, where a
    // decoder only warns and fills the rest with grey.
    static bool isComplete(const QByteArray &data);
};
