#pragma once

#include "tests/story/StoryFixture.h"

/// The program with each of its windows shown in turn.
class CEveryWindow : public CStory
{
protected:
    /// Starts the program and looks at each of its windows, the site dialog on the Earth and on Mars.
    void Visit(const std::function<void(QWidget&)>& look);
};
