#include "planetarium/WindowMemory.h"

#include "host/dialog/KivDialog.h"
#include "host/dialog/ScreenFit.h"
#include "host/system/Registry.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

#include <array>

using namespace Qt::StringLiterals;

namespace
{
const QString Section = u"Planetarium"_s;

struct Window
{
    int Template;
    const char16_t* Name;
};
/// The dialogs that stay open for long; the small ones come up over the window that opens them.
constexpr std::array Dialogs{Window{7300, u"WindowSite"}, Window{7301, u"WindowCity"}, Window{7307, u"WindowRoadMap"},
                             Window{7308, u"WindowRoadMapFind"}};

QByteArray Stored(const QString& name)
{
    QString value;
    CRegistry::Read(Section, name, QString(), &value);
    return QByteArray::fromBase64(value.toLatin1());
}
} // namespace

CWindowMemory::CWindowMemory()
{
    qApp->installEventFilter(this);
}

QString CWindowMemory::NameOf(const QWidget& window)
{
    if (const auto* dialog = qobject_cast<const CKivDialog*>(&window)) {
        for (const Window& known : Dialogs) {
            if (known.Template == dialog->TemplateNumber())
                return QString::fromUtf16(known.Name);
        }
        return {};
    }
    return window.property("windowMemory").toString();
}

bool CWindowMemory::Knows(const QWidget& window)
{
    const QString name = NameOf(window);
    return !name.isEmpty() && !Stored(name).isEmpty();
}

void CWindowMemory::Save(const QWidget& window)
{
    const QString name = NameOf(window);
    const QByteArray place = window.saveGeometry();
    if (!name.isEmpty() && place != Stored(name))
        CRegistry::Write(Section, name, QString::fromLatin1(place.toBase64()));
}

void CWindowMemory::Restore(QWidget& window)
{
    window.restoreGeometry(Stored(NameOf(window)));
    const QSize room = ScreenFit::Room(window);
    if (!window.isMaximized() && !window.isFullScreen() && window.size() != window.size().boundedTo(room))
        ScreenFit::Keep(window); // of a larger screen, or of a file that was damaged
}

bool CWindowMemory::eventFilter(QObject* watched, QEvent* event)
{
    // Both come before the window itself hears of it; what the desktop does to a window is none of a user's doings.
    if ((event->type() == QEvent::Show || event->type() == QEvent::Hide) && !event->spontaneous()) {
        auto* window = qobject_cast<QWidget*>(watched);
        if (window && window->isWindow()) {
            if (event->type() == QEvent::Hide)
                Save(*window);
            else if (Knows(*window))
                Restore(*window);
        }
    }
    return QObject::eventFilter(watched, event);
}
