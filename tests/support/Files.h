#pragma once
// Whole-file reads and writes for tests.
#include <QByteArray>
#include <QFile>
#include <QString>

inline QByteArray readFile(const QString& path)
{
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

inline void writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write(content);
}
