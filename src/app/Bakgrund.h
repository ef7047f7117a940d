#pragma once

#include <QImage>
#include <QSize>
#include <QString>

#include <string>

// The most of a background picture the table can show: the largest play view, 1280 × 1024,
// at the ratio of a screen of size `skarm`.
QSize BakgrundsStorlek(QSize skarm);

// Loads a background picture from `fil`: only a regular file is opened (a named pipe or a
// device would block the window for good), and a picture larger than `storlek` needs is
// scaled down as it is read, keeping its ratio, to the least size that still covers
// `storlek`. A picture that cannot be scaled while it is read and would take more than a few
// tens of MB is refused. Every pixel comes out opaque. A null picture when it cannot be had,
// with the reason in `fel`.
QImage LasBakgrundsBild(const QString& fil, QSize storlek, std::string* fel);
