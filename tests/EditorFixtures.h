#pragma once

// Files for the editor's tests: EXIF written by exiftool, tags read back by it, and the DCT coefficients
// of a JPEG read with libjpeg, to tell a lossless turn from one that decoded and encoded again.

#include "TestSupport.h"

#include <QByteArray>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>
#include <QStringList>

#include <csetjmp>
#include <cstdio>
#include <vector>

#include <jpeglib.h>

namespace EditorFixtures {

inline bool hasTool(const char *name)
{
    return !QStandardPaths::findExecutable(QString::fromLatin1(name)).isEmpty();
}

// Runs a tool to its end; its standard output, or a null array when it failed.
inline QByteArray run(const QString &program, const QStringList &arguments)
{
    const ProgramRun r = runProgram(program, arguments);
    if (r.code != 0)
        qWarning("%s failed: %s", qPrintable(program), r.err.constData());
    return r.code != 0 ? QByteArray() : r.out.isNull() ? QByteArray("") : r.out;
}

// Writes tags into a file in place, e.g. {"-Orientation#=6", "-Make=Quaydrop Test"}.
inline bool writeTags(const QString &path, QStringList tags)
{
    tags << QStringLiteral("-overwrite_original") << QStringLiteral("-q") << path;
    return !run(QStringLiteral("exiftool"), tags).isNull();
}

// Every tag exiftool finds, by name, with numbers as numbers (-n).
inline QJsonObject tags(const QString &path)
{
    const QByteArray json = run(QStringLiteral("exiftool"), {QStringLiteral("-j"), QStringLiteral("-n"), path});
    return QJsonDocument::fromJson(json).array().at(0).toObject();
}

// The quantised DCT coefficients of every component, in order; empty when libjpeg cannot read them.
struct JpegFailure
{
    jpeg_error_mgr manager;
    jmp_buf back;
};

inline std::vector<JCOEF> coefficients(const QByteArray &jpeg)
{
    std::vector<JCOEF> all;
    jpeg_decompress_struct info{};
    JpegFailure failure{};
    info.err = jpeg_std_error(&failure.manager);
    failure.manager.error_exit = [](j_common_ptr c) { longjmp(reinterpret_cast<JpegFailure *>(c->err)->back, 1); };
    if (setjmp(failure.back)) {
        jpeg_destroy_decompress(&info);
        return {};
    }
    jpeg_create_decompress(&info);
    jpeg_mem_src(&info, reinterpret_cast<const unsigned char *>(jpeg.constData()), (unsigned long)jpeg.size());
    jpeg_read_header(&info, TRUE);
    jvirt_barray_ptr *arrays = jpeg_read_coefficients(&info);
    for (int c = 0; c < info.num_components; ++c) {
        const jpeg_component_info &comp = info.comp_info[c];
        for (JDIMENSION row = 0; row < comp.height_in_blocks; ++row) {
            JBLOCKARRAY blocks = info.mem->access_virt_barray(reinterpret_cast<j_common_ptr>(&info), arrays[c], row, 1, FALSE);
            for (JDIMENSION col = 0; col < comp.width_in_blocks; ++col)
                all.insert(all.end(), blocks[0][col], blocks[0][col] + DCTSIZE2);
        }
    }
    jpeg_finish_decompress(&info);
    jpeg_destroy_decompress(&info);
    return all;
}

inline QByteArray readAll(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

// What `jpegtran -copy all` with these arguments makes of a file.
inline QByteArray jpegtran(const QString &path, const QStringList &arguments)
{
    return run(QStringLiteral("jpegtran"), QStringList{QStringLiteral("-copy"), QStringLiteral("all")} + arguments + QStringList{path});
}

} // namespace EditorFixtures

#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

namespace EditorFixtures {

// A small landscape with sky, sun, hills and a harbour wall: something to crop and paint on that
// shows at a glance whether it is upright, whole and undamaged.
inline QImage scenery(int w, int h)
{
    QImage img(w, h, QImage::Format_RGB32);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    QLinearGradient sky(0, 0, 0, h * 0.6);
    sky.setColorAt(0, QColor(64, 120, 196));
    sky.setColorAt(1, QColor(190, 214, 236));
    p.fillRect(img.rect(), sky);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(255, 214, 102));
    p.drawEllipse(QPointF(w * 0.78, h * 0.22), h * 0.09, h * 0.09);
    QPainterPath hills;
    hills.moveTo(0, h * 0.62);
    hills.cubicTo(w * 0.25, h * 0.45, w * 0.45, h * 0.7, w * 0.7, h * 0.52);
    hills.cubicTo(w * 0.85, h * 0.45, w * 0.95, h * 0.55, w, h * 0.5);
    hills.lineTo(w, h);
    hills.lineTo(0, h);
    p.setBrush(QColor(74, 140, 84));
    p.drawPath(hills);
    p.setBrush(QColor(38, 86, 128));
    p.drawRect(QRectF(0, h * 0.78, w, h * 0.22));
    p.setBrush(QColor(150, 130, 110));
    p.drawRect(QRectF(w * 0.08, h * 0.72, w * 0.5, h * 0.07));
    p.setBrush(QColor(200, 70, 60));
    p.drawRect(QRectF(w * 0.18, h * 0.6, w * 0.12, h * 0.12));
    p.setBrush(QColor(90, 50, 40));
    p.drawPolygon(QPolygonF({QPointF(w * 0.16, h * 0.6), QPointF(w * 0.24, h * 0.52), QPointF(w * 0.32, h * 0.6)}));
    return img;
}

} // namespace EditorFixtures
