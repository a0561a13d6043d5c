#pragma once

#include <QMetaType>
#include <QStringList>

class QDataStream;

/// The lines sent from a command window; an array of texts that can be serialised and is empty once destroyed.
class CCommandHistory : public QStringList
{
public:
    using QStringList::QStringList;
};
Q_DECLARE_METATYPE(CCommandHistory)

/// Writes the number of entries (32 bits) and then each entry.
QDataStream& operator<<(QDataStream& stream, const CCommandHistory& history);

/// Replaces the entries by those of the stream. When it ends early or is damaged, the complete entries stay and the
/// stream's status says; memory follows the bytes that are there, whatever number they announce.
QDataStream& operator>>(QDataStream& stream, CCommandHistory& history);
