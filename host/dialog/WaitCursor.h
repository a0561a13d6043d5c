#pragma once

#include <QGuiApplication>

/// The wait cursor for the lifetime of the object.
class CWaitCursor
{
public:
    CWaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    CWaitCursor(const CWaitCursor&) = delete;
    CWaitCursor& operator=(const CWaitCursor&) = delete;
    ~CWaitCursor() { QGuiApplication::restoreOverrideCursor(); }
};
