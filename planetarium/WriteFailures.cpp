#include "planetarium/WriteFailures.h"

#include "host/dialog/Prompts.h"

#include <QApplication>
#include <QDir>
#include <QPointer>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace
{
QString Reason(WriteFailure::Cause cause)
{
    switch (cause) {
    case WriteFailure::Cause::NoFolder:
        return u"保存先のフォルダがなく、作ることもできません。"_s;
    case WriteFailure::Cause::IsNoFile:
        return u"同じ名前のフォルダか装置があります。"_s;
    case WriteFailure::Cause::NotPermitted:
        return u"ファイルかフォルダへの書き込みが許可されていません。"_s;
    case WriteFailure::Cause::ReadOnlyDrive:
        return u"読み取り専用のドライブです。"_s;
    case WriteFailure::Cause::Full:
        return u"ドライブの空き容量が足りません。"_s;
    case WriteFailure::Cause::Other:
    case WriteFailure::Cause::None:
        break;
    }
    return u"書き込みの途中で失敗しました。"_s;
}
} // namespace

CWriteFailures::CWriteFailures(QWidget& window, CSettingsFile& settings) : m_window(window), m_settings(settings)
{
    m_settings.SetListener([this](const QString& path, WriteFailure::Cause cause) {
        Report(
            u"設定を保存できませんでした。"_s, path, cause,
            u"原因を取り除くと、次に設定が変わったときに保存されます。それまでに終了すると、変更した設定は失われます。"_s);
    });
}

CWriteFailures::~CWriteFailures()
{
    m_settings.SetListener({});
}

void CWriteFailures::Report(const QString& what, const QString& path, WriteFailure::Cause cause,
                            const QString& consequence)
{
    if (cause == WriteFailure::Cause::None) {
        m_told.remove(path);
        return;
    }
    if (m_told.value(path, WriteFailure::Cause::None) == cause)
        return;
    m_told.insert(path, cause);
    m_messages +=
        what + u"\nファイル：%1\n原因：%2\n\n%3"_s.arg(QDir::toNativeSeparators(path), Reason(cause), consequence);
    QMetaObject::invokeMethod(this, &CWriteFailures::Tell, Qt::QueuedConnection);
}

void CWriteFailures::Tell()
{
    while (!m_messages.isEmpty()) {
        QWidget* over = QApplication::activeModalWidget();
        const QPointer<QWidget> active = QApplication::activeWindow();
        IPrompts::Current().Show(over ? over : &m_window, m_messages.takeFirst(), IPrompts::Icon::Warning,
                                 IPrompts::Buttons::Ok);
        if (active) // the user goes on typing there
            active->activateWindow();
    }
}
