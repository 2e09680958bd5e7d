// A text that comes must be a whole line; those before it are missing.
#include "tests/simulation/Forwarded.h"

#include "tests/simulation/Failure.h"

namespace simulation {

namespace {

constexpr std::size_t MostKept = 10'000;  // of memory

}  // namespace

void Forwarded::Came(std::string_view sText) {
    if (!m_sWrong.empty()) return;
    const std::string_view sWaiting = std::string_view(m_sWaiting).substr(m_iFirst);
    const bool bLine = sText.ends_with("\r\n") && sText.find('\n') == sText.size() - 1;
    std::int64_t lMissing = 0;
    std::size_t iAt = 0;
    while (iAt < sWaiting.size() && !sWaiting.substr(iAt).starts_with(sText)) {
        iAt = sWaiting.find('\n', iAt) + 1;
        ++lMissing;
    }
    if (!bLine || iAt == sWaiting.size()) {
        m_sWrong = "the output said [" + std::string(sText) + "], next was [" +
                   std::string(sWaiting.substr(0, sWaiting.find('\r'))) + "]";
        return;
    }
    m_lMissing += lMissing;
    m_iFirst += iAt + sText.size();
    if (!AllCame()) return;
    m_iFirst = 0;
    m_sWaiting.clear();
    if (m_sWaiting.capacity() > MostKept) m_sWaiting.shrink_to_fit();
}

void Forwarded::Check() const {
    if (!m_sWrong.empty()) throw Failure(m_sWrong);
}

}  // namespace simulation
