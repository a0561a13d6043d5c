// The host's side of the road map: whether it is offered, opening, following the observer, logging.

#include "planetarium/CallText.h"
#include "planetarium/Host.h"
#include "roadmap/core/CormppCheck.h"

using namespace Qt::StringLiterals;

bool CHost::HasRoadMap()
{
    return CCormppCheck::CheckCorMppInstalled() == 1;
}

void CHost::OpenRoadMap(bool withObserver)
{
    if (m_roadMap && m_roadMap->IsWindow() && m_roadMapHasObserver == withObserver) {
        m_roadMap->raise();
        m_roadMap->activateWindow();
        return;
    }
    if (!HasRoadMap())
        return;
    CloseRoadMap();
    m_roadMap = std::make_unique<CDlgMapple>(m_mainWindow);
    m_roadMapHasObserver = withObserver;
    m_roadMap->SetKPDateObs(withObserver ? &m_observer : nullptr);
    m_roadMap->SetReadFile(1);
    LogRoadMap();
    m_roadMap->Create(&m_engine);
}

void CHost::CloseRoadMap()
{
    if (m_roadMap)
        m_roadMap->hide(); // while it is still known what it is
    m_roadMap.reset();
}

void CHost::LogRoadMap()
{
    connect(&m_roadMap->MapOfDialog(), &CControlWindow::Invoked, this,
            [this](int method, const QVariantList& arguments, const QVariant& result) {
                Speak(u"道路"_s, CallText::RoadMap(method, arguments), CallText::Answer(result));
            });
}

/// The mark follows the observer, unless the observer follows the mark.
void CHost::MoveRoadMap()
{
    if (m_roadMap && !m_roadMap->IsPicking())
        m_roadMap->UpdateSelectPosition();
}
