#pragma once

#include <QHash>
#include <QString>
#include <QStringView>

#include <optional>
#include <vector>

class QXmlStreamReader;
class QXmlStreamWriter;

/// The host's record of the components that are installed on this machine: keys in a tree, typed values in them. An
/// object is a copy of the record as it was when the object was made. Names are compared without regard to case.
///
/// The record is a readable XML file; what is damaged in it, or larger than any installer makes it, is left out:
///
///     <components>
///       <key name="HKEY_LOCAL_MACHINE">
///         <key name="SOFTWARE"> ... <value name="path" type="string">/usr/share/maps</value> ... </key>
///       </key>
///     </components>
///
/// A value without a name is its key's default value. Types: "string" (also when left out), "expandable",
/// "multi-string" (a string a line) and "number".
class CComponentStore
{
public:
    enum class Root
    {
        Classes,
        LocalMachine
    };

    enum class ValueType
    {
        String,
        Expandable,
        MultiString,
        Number
    };

    struct Value
    {
        ValueType Type = ValueType::String;
        QString Text; ///< of a multi-string: its strings, each ended by a null character; of a number: its digits

        /// The text up to its first null character.
        [[nodiscard]] QString FirstText() const { return Text.section(QChar(u'\0'), 0, 0); }
    };

    /// What an enumeration found at an index.
    enum class Enumerated
    {
        Read,
        TooLong,
        NoMore
    };

    /// A key; lives as long as its store and until the store's next SetValue.
    class Key
    {
    public:
        /// The subkey of that index, in the order of the file. `length` is the most characters that `name` takes, and
        /// becomes the length of the subkey's name. A name that is longer leaves `name` as it was (TooLong); after the
        /// last subkey both are left as they were.
        [[nodiscard]] Enumerated EnumKey(qsizetype index, QString* name, qsizetype* length) const;

        /// The value of that name, the default value for an empty name; none when there is none.
        [[nodiscard]] std::optional<Value> QueryValue(const QString& name) const;

    private:
        friend class CComponentStore;

        [[nodiscard]] const Key* Find(const QString& name) const;
        Key& FindOrAdd(const QString& name);
        void ReadContent(QXmlStreamReader& xml, int depth);
        void WriteContent(QXmlStreamWriter& xml) const;

        QString m_name;
        std::vector<Key> m_keys;
        QHash<QString, std::size_t> m_indices; // into m_keys, by folded name
        std::vector<std::pair<QString, Value>> m_values;
    };

    /// The record as it is in the file of the host's context now; empty when there is none.
    CComponentStore();

    /// The key of that path, its parts parted by backslashes; null when it does not exist.
    [[nodiscard]] const Key* OpenKey(Root root, QStringView path) const;

    /// Sets a value, and adds the keys that lead to it. On disk after Save only.
    void SetValue(Root root, QStringView path, const QString& name, const Value& value);

    /// Replaces the file by this record. False when that fails; the file is then as it was.
    [[nodiscard]] bool Save() const;

private:
    Key m_top;
};
