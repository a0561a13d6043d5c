#include "planetarium/CommandLine.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>

#include <array>

using namespace Qt::StringLiterals;

namespace
{
struct Option
{
    const char16_t* Name;
    const char16_t* Value; ///< empty for a switch
    const char16_t* Text;
};

constexpr Option DataOption{u"data", u"フォルダ", u"付属データのフォルダ"};
constexpr Option UserOption{u"user", u"フォルダ", u"地名の一覧を保存するフォルダ"};
constexpr Option SettingsOption{u"settings", u"ファイル", u"設定ファイル（なければ作成します）"};
constexpr Option TerrainOption{u"terrain", u"ファイル", u"地形データの索引ファイル（空の文字列で地形なし）"};
constexpr Option DeveloperOption{u"developer", u"", u"開発用のメニューと、コマンドと応答の記録を表示します"};
constexpr Option VersionOption{u"version", u"", u"バージョンを表示します"};
constexpr Option HelpOption{u"help", u"", u"この説明を表示します"};
constexpr std::array Options{DataOption,      UserOption,    SettingsOption, TerrainOption,
                             DeveloperOption, VersionOption, HelpOption};

QString Text(const char16_t* text)
{
    return QString::fromUtf16(text);
}

QString Usage(const Option& option)
{
    const QString value = Text(option.Value);
    return u"--"_s + Text(option.Name) + (value.isEmpty() ? QString() : u" <"_s + value + u'>');
}

QString HelpText()
{
    QString help = u"使い方: planetarium [オプション]\n観測地モジュールの見本プラネタリウム\n\nオプション:\n"_s;
    for (const Option& option : Options)
        help += u"  "_s + Usage(option) + u"\n      "_s + Text(option.Text) + u'\n';
    return help;
}

QString AsFolder(const QString& path)
{
    const QString absolute = QDir(path).absolutePath();
    return absolute.endsWith(u'/') ? absolute : absolute + u'/';
}

QCommandLineOption Declared(const Option& option)
{
    return {Text(option.Name), QString(), Text(option.Value)};
}

/// The argument that gives a value to a switch or none to another option.
QString WithoutSense(const QStringList& arguments)
{
    for (const Option& option : Options) {
        const QStringList found = arguments.filter(u"--"_s + Text(option.Name) + u'=');
        if (!*option.Value && !found.isEmpty())
            return found.constFirst();
    }
    return arguments.constLast();
}

/// What the parser could not make sense of; empty when all is well.
QString Mistake(const QCommandLineParser& parser, bool isParsed, const QStringList& arguments)
{
    if (!parser.unknownOptionNames().isEmpty()) {
        const QString name = parser.unknownOptionNames().constFirst();
        return u"オプション「%1」はありません。"_s.arg((name.size() > 1 ? u"--"_s : u"-"_s) + name);
    }
    for (const Option& option : {DataOption, UserOption, SettingsOption, TerrainOption}) {
        const QString value = parser.value(Text(option.Name));
        const bool canBeEmpty = option.Name == TerrainOption.Name || !parser.isSet(Text(option.Name));
        if (value.startsWith(u"--"_s) ||
            (value.isEmpty() && !canBeEmpty)) // the next option; the current folder unasked
            return u"オプション「--%1」の値がありません。"_s.arg(Text(option.Name));
    }
    if (!parser.positionalArguments().isEmpty())
        return u"引数「%1」は使えません。"_s.arg(parser.positionalArguments().constFirst());
    if (!isParsed)
        return u"オプション「%1」の値の指定が正しくありません。"_s.arg(WithoutSense(arguments));
    return {};
}

/// What is not where an option says; empty when all is there.
QString Missing(const CommandLine& line)
{
    const auto isFolder = [](const QString& path) { return QFileInfo(path).isDir(); };
    for (const auto& [option, folder] : {std::pair(DataOption, line.Data), std::pair(UserOption, line.User)}) {
        if (folder && !isFolder(*folder))
            return u"フォルダ「%1」がありません（--%2）。"_s.arg(QDir::toNativeSeparators(*folder), Text(option.Name));
    }
    if (line.Settings && isFolder(*line.Settings))
        return u"設定ファイル「%1」と同じ名前のフォルダがあります（--settings）。"_s.arg(*line.Settings);
    if (line.Settings && !isFolder(QFileInfo(*line.Settings).absolutePath()))
        return u"設定ファイル「%1」を置くフォルダがありません（--settings）。"_s.arg(*line.Settings);
    if (line.Terrain && !line.Terrain->isEmpty() && !QFileInfo(*line.Terrain).isFile())
        return u"ファイル「%1」がありません（--terrain）。"_s.arg(*line.Terrain);
    return {};
}
} // namespace

CommandLine CommandLine::Parse(const QStringList& arguments)
{
    QCommandLineParser parser;
    for (const Option& option : Options)
        parser.addOption(Declared(option));
    const bool isParsed = parser.parse(arguments);

    CommandLine line;
    QString mistake = Mistake(parser, isParsed, arguments);
    if (mistake.isEmpty() && parser.isSet(Text(HelpOption.Name))) {
        line.Message = HelpText();
        return line;
    }
    if (mistake.isEmpty() && parser.isSet(Text(VersionOption.Name))) {
        line.Message = u"planetarium %1\n"_s.arg(QStringLiteral(KIV_VERSION));
        return line;
    }
    const auto value = [&parser](const Option& option) -> std::optional<QString> {
        return parser.isSet(Text(option.Name)) ? std::optional(parser.value(Text(option.Name))) : std::nullopt;
    };
    const auto folder = [&value](const Option& option) {
        const std::optional<QString> path = value(option);
        return path ? std::optional(AsFolder(*path)) : path;
    };
    line.Data = folder(DataOption);
    line.User = folder(UserOption);
    line.Settings = value(SettingsOption);
    line.Terrain = value(TerrainOption);
    line.IsDeveloper = parser.isSet(Text(DeveloperOption.Name));
    if (mistake.isEmpty())
        mistake = Missing(line);
    if (!mistake.isEmpty()) {
        line.Message = u"planetarium: "_s + mistake + u"\n使い方は planetarium --help で表示されます。\n"_s;
        line.Status = Mistaken;
    }
    return line;
}
