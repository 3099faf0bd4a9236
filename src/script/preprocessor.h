// Turns a script and all that it includes into one stream of characters, each with the file and line it is
// from.
#pragma once

#include "script/budget.h"
#include "script/characters.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Zel {

/// The whole expansion happens in the constructor: includes, macros, comments. What it leaves is read
/// character by character afterwards.
///
/// The stream between the two halves is `m_output`. A byte other than 0 is a character; 0 introduces a
/// record:
///
///   0 'F' length(4) name   the following characters are from this file
///   0 'L' line(4)          ... and on this line
///   0 0                    one character of value 0
///
/// with numbers of 32 bits, the high byte first.
class ScriptPreprocessor {
public:
    /// Throws the preprocessor's exceptions, ScriptException_UnexpectedEndOfFile for a string literal that no
    /// file closes, and what opening and reading a File throws. The budget must outlive this object.
    ScriptPreprocessor(std::string const& fileName, Budget& budget);

    /// Looks at the next character; nothing at the end. getFileName and getLine then tell where it is from.
    std::optional<char> peek() {
        if (m_readPosition < m_output.size() && m_output[m_readPosition] != kMarker)
            return m_output[m_readPosition];
        return decodeAt(m_readPosition);
    }

    /// Goes past the character that peek has shown.
    void advance() { m_readPosition += m_output[m_readPosition] == kMarker ? 2 : 1; }

    /// Goes past the characters of these kinds that come next on the same line, and returns them.
    std::string_view takeRun(int kinds) {
        std::size_t const begin = m_readPosition;
        while (m_readPosition < m_output.size() && isOfKind(m_output[m_readPosition], kinds))
            ++m_readPosition;
        return std::string_view(m_output).substr(begin, m_readPosition - begin);
    }

    /// The file, as it was named, and the line of the last character seen; "" and 0 before the first.
    std::string const& getFileName() const { return m_currentFileName; }
    int getLine() const { return m_currentLine; }

private:
    static constexpr char kMarker = '\0';

    /// A file of the script's set. Its text is read once, however often it is included.
    struct Source {
        std::string text;
        int entries = 0; // of m_chain
    };

    /// A name as it was given, with its file.
    using NamedSource = std::pair<std::string const, Source*>;

    /// A file being read.
    struct SourceFrame {
        std::string const* name;
        std::string_view text;
        std::size_t position;
        std::uint64_t line;
        std::size_t depth; // index into m_chain
    };

    /// The line and the name of the file being read: every message needs both.
    struct Place {
        std::uint64_t line;
        std::string const* name;
    };

    struct Directive {
        std::vector<std::string> words; // the keyword first; no more of them than any directive takes
        Place reported;                 // where reading stands behind it: what messages name
        std::size_t depth;              // of the file that it stands in
    };

    void run();
    NamedSource const& sourceOf(std::string const& name);
    void pushFile(NamedSource const& source);
    int peekSource(std::size_t offset) const;
    void popFinishedFrames();
    void advanceSource();
    int readSource();
    std::string_view readRun(int kinds);
    Place place() const;
    [[noreturn]] static void throwTooLarge(Place const& place);

    void emit(int value);
    void emitString(std::string_view text);
    void emitRun(std::string_view text);
    void emitPlace();
    void appendRecord(char kind, std::uint64_t number);

    void copyStringLiteral();
    void skipLineComment();
    void skipBlockComment();
    void readSame(int character);
    void expandIdentifier();
    void handleDirective();
    void include(Directive const& directive);
    void leaveChainBelow(std::size_t depth);
    void defineMacro(Directive const& directive);
    void undefineMacro(Directive const& directive);
    void requireWords(Directive const& directive, std::size_t count) const;

    std::optional<char> decodeAt(std::size_t& position);
    std::uint32_t numberAt(std::size_t position) const;

    // An object expands one script, so all of these start empty and none is ever reset.
    Budget& m_budget;
    std::map<std::string, Source> m_sources; // by resolved name
    std::map<std::string, Source*> m_names;  // by every name that was given
    std::deque<SourceFrame> m_frames;        // the last is being read
    // Who included whom, down to the file that was entered last. A file whose last line is an #include has no
    // frame any more when the included one is read, but stays here.
    std::vector<Source*> m_chain;
    std::map<std::string, std::string, std::less<>> m_macros;
    std::pmr::string m_output;
    std::string const* m_lastEmittedName = nullptr;
    std::uint64_t m_lastEmittedLine = 0;

    std::size_t m_readPosition = 0; // of the next record or character
    std::string m_currentFileName;
    int m_currentLine = 0;
};

} // namespace Zel
