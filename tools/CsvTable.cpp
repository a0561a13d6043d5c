#include "tools/CsvTable.h"

#include <QFile>

#include <stdexcept>

using namespace Qt::StringLiterals;

std::vector<QStringList> CsvTable::Read(const QString& path, qsizetype columns)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw std::runtime_error("cannot read " + path.toStdString());
    }
    std::vector<QStringList> rows;
    for (int number = 1; !file.atEnd(); ++number) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.isEmpty() || line.startsWith(u'#')) {
            continue;
        }
        QStringList fields = line.split(u',');
        if (fields.size() != columns) {
            throw std::runtime_error(path.toStdString() + ":" + std::to_string(number) + ": " +
                                     std::to_string(fields.size()) + " fields");
        }
        for (QString& field : fields) {
            field = field.trimmed();
        }
        rows.push_back(std::move(fields));
    }
    return rows;
}
