// Tells a view once that its store has changed; further changes until the view has taken over cost one test.
#pragma once

#include <functional>
#include <utility>

namespace runtime {

class ChangeMark {
public:
    // Called at the first change after Clear.
    void SetListener(std::function<void()> tListener) { m_tListener = std::move(tListener); }
    void Mark() {
        if (m_bMarked) return;
        m_bMarked = true;
        if (m_tListener) m_tListener();
    }
    bool Marked() const { return m_bMarked; }
    void Clear() { m_bMarked = false; }

private:
    std::function<void()> m_tListener;
    bool m_bMarked = false;
};

}  // namespace runtime
