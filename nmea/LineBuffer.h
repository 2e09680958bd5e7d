// The line that a port is receiving: cut out of what arrives, and left there for as long as it stays whole.
#pragma once

#include <string>
#include <string_view>

namespace nmea {

class LineBuffer {
public:
    static constexpr std::size_t Longest = 65536;  // far beyond any sentence; who ends no line shall not fill memory

    LineBuffer() = default;
    LineBuffer(const LineBuffer&) = delete;  // the view below points at itself or at the block that was read
    LineBuffer& operator=(const LineBuffer&) = delete;

    // Takes the characters of sBlock up to its first carriage return, which goes too; line feeds are dropped wherever
    // they stand. True when that completed the line. A line that lay whole in sBlock is not copied: it holds no longer
    // than the block does, so call clear() or assign() before that goes.
    bool Take(std::string_view& sBlock);

    // Longer than Longest; of the rest, one character is kept.
    bool Overlong() const { return m_sLine.size() > Longest; }

    // The characters so far, without line end.
    operator std::string_view() const { return m_sLine; }
    std::size_t size() const { return m_sLine.size(); }
    bool empty() const { return m_sLine.empty(); }
    void assign(std::string_view sLine);  // a copy
    // A whole line that stays where it lies, until Keep() copies it.
    void View(std::string_view sLine) {
        m_sKept.clear();
        m_sLine = sLine;
    }
    void Keep();
    void clear();

private:
    void Append(std::string_view sPiece);

    std::string m_sKept;       // the beginning of a line whose rest has not come; empty while the line lies in a block
    std::string_view m_sLine;  // all of m_sKept, or a piece of a block
};

}  // namespace nmea
