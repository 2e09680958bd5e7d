// A store of things that are dear to make, kept while they are asked for.
#pragma once

#include <QHash>

namespace toolkit {

// Two generations: what is asked for belongs to the young one; when that is full, or at Age(), it becomes the old one
// and what was old is forgotten. So what nobody asks for goes within two generations, and what is in use is never made
// anew all at once.
template <class Key, class Value>
class RecentlyUsed {
public:
    explicit RecentlyUsed(qsizetype iMost) : m_iMost(iMost) {}  // of a generation
    // Until the next call.
    template <class Make>
    const Value& Get(const Key& tKey, Make tMake) {
        if (const auto it = m_tYoung.constFind(tKey); it != m_tYoung.constEnd()) return *it;
        if (m_tYoung.size() >= m_iMost) Age();
        const auto it = m_tOld.constFind(tKey);
        return *m_tYoung.insert(tKey, it == m_tOld.constEnd() ? tMake() : *it);
    }
    void Age() {
        m_tOld.swap(m_tYoung);
        m_tYoung.clear();
    }
    void Clear() {
        m_tYoung.clear();
        m_tOld.clear();
    }
    qsizetype Size() const { return m_tYoung.size() + m_tOld.size(); }

private:
    qsizetype m_iMost;
    QHash<Key, Value> m_tYoung;
    QHash<Key, Value> m_tOld;
};

}  // namespace toolkit
