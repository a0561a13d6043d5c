#include "host/control/RoadMapResults.h"

#include <QHash>

#include <utility>

namespace
{
QHash<qint64, const CRoadMapResults*>& LivingLists()
{
    static QHash<qint64, const CRoadMapResults*> lists;
    return lists;
}

qint64 NextHandle()
{
    static qint64 last = 0;
    return ++last;
}
} // namespace

CRoadMapResults::CRoadMapResults(std::vector<CRoadMapResult> rows) : m_rows(std::move(rows)), m_handle(NextHandle())
{
    LivingLists().insert(m_handle, this);
}

CRoadMapResults::~CRoadMapResults()
{
    LivingLists().remove(m_handle);
}

const CRoadMapResults* CRoadMapResults::Find(qint64 handle)
{
    return LivingLists().value(handle);
}
