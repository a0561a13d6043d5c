#pragma once

#include <QByteArray>
#include <QFile>
#include <QTemporaryDir>

#include <cstdint>
#include <cstdlib>

/// A folder for the files of one fuzz target; lives as long as the process.
class CFuzzFolder
{
public:
    [[nodiscard]] QString Path() const { return m_folder.path() + QLatin1Char('/'); }

    /// Writes the file and returns its path.
    QString Write(const QString& name, const QByteArray& bytes)
    {
        QFile file(Path() + name);
        if (!file.open(QIODevice::WriteOnly))
            std::abort();
        file.write(bytes);
        return file.fileName();
    }

    [[nodiscard]] static QByteArray Read(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private:
    QTemporaryDir m_folder;
};
