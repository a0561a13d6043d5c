#pragma once

#include "city/core/OverlayNode.h"

#include <memory>
#include <string>
#include <vector>

/// Changes of an overlay document, recorded as they are made, so that they can be taken back together. The changes of
/// one document are taken back in the reverse order only. What they took out of the document is kept here meanwhile, so
/// that earlier ones find it again.
class COverlayChange
{
public:
    [[nodiscard]] bool IsEmpty() const { return m_steps.empty(); }

    COverlayNode& Append(COverlayNodes& nodes, picojson::value element);
    /// The element is no longer to be used.
    void Erase(COverlayNode& node);
    COverlayNode& Replace(COverlayNode& node, picojson::value element);
    /// Puts the element behind all others of its array.
    void PutLast(COverlayNode& node);
    void SetKey(COverlayNode& node, const std::string& key, picojson::value value);
    /// Adds the key with the value null where it is missing.
    void Provide(COverlayNode& node, const std::string& key);

    void Revert();

private:
    enum class Kind
    {
        Appended,
        Erased,
        Replaced,
        PutLast,
        KeySet
    };
    struct CStep
    {
        Kind What = Kind::Appended;
        COverlayNode* Node = nullptr;        ///< the one in the document, unless it was erased
        std::unique_ptr<COverlayNode> Taken; ///< the one that was erased or replaced
        quint64 Number = 0;                  ///< that an element had before it was put last
        std::string Key;
        COverlayNode::CSlot Old;
    };
    static void Revert(CStep&& step);

    std::vector<CStep> m_steps;
};
