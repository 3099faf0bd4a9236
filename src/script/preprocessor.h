// Turns a script and all that it includes into one stream of characters. Each knows the file and the line
// that it comes from.
#pragma once

#include "script/budget.h"
#include "script/characters.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory_resource>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Zel {

/// The constructor does the whole expansion: includes, macros and comments. The result is read character by
/// character afterwards.
///
/// `m_output` holds the characters between these two halves, and `m_marks` where they come from. A line feed
/// begins a line; a mark stands where the place does not follow from that.
class ScriptPreprocessor {
public:
    /// Throws the preprocessor's exceptions, what opening and reading a File throws, and
    /// ScriptException_UnexpectedEndOfFile for a string literal without an end. The budget must outlive this
    /// object.
    ScriptPreprocessor(std::string const& fileName, Budget& budget);

    /// How many characters there are.
    std::size_t size() const { return m_output.size(); }

    /// The next character, which stays unread; nothing at the end.
    std::optional<char> peek() {
        if (m_readPosition == m_output.size())
            return std::nullopt;
        m_seen = m_readPosition + 1;
        return m_output[m_readPosition];
    }

    /// Steps over the character that peek has returned.
    void advance() { ++m_readPosition; }

    /// Reads the characters of these kinds that come next. To be called behind advance.
    std::string_view takeRun(int kinds) {
        std::size_t const begin = m_readPosition;
        while (m_readPosition < m_output.size() && isOfKind(m_output[m_readPosition], kinds))
            ++m_readPosition;
        m_seen = m_readPosition;
        return std::string_view(m_output).substr(begin, m_readPosition - begin);
    }

    /// The place of the last character seen: its file, as it was named, and its line. "" and 0 before the
    /// first.
    std::string getFileName() const;
    int getLine() const;

private:
    /// A file of the script. It is read once, however often it is included.
    struct Source {
        std::string text;
        int entries = 0; // of this file in m_chain
    };

    /// A file under a name that was given.
    using NamedSource = std::pair<std::string const, Source*>;

    /// One reading of a file. Its lines are counted when one is asked for.
    struct SourceFrame {
        std::string const* name;
        std::string_view text;
        std::size_t depth; // its index in m_chain
        std::size_t position = 0;
        std::size_t countedEnd = 0;
        std::uint64_t countedLine = 1; // of countedEnd
    };

    /// The line and the name of the file being read: every message needs both.
    struct Place {
        std::uint64_t line;
        std::string const* name;
    };

    /// Where the character at that position of the output comes from, and those behind it.
    struct Mark {
        std::size_t position;
        Place place;
    };

    struct Directive {
        std::vector<std::string> words; // the keyword first; as many as any directive takes
        Place reported;                 // where reading stands after it, which messages name
        std::size_t depth;              // of the file that it stands in
    };

    void run();
    NamedSource const& sourceOf(std::string const& name);
    void pushFile(NamedSource const& source);
    int peekSource(std::size_t offset);
    void popFinishedFrames();
    void advanceSource();
    int readSource();
    std::string_view readRun(int kinds);
    Place place();
    [[noreturn]] static void throwTooLarge(Place const& place);

    void emit(int value);
    void emitRun(std::string_view text);
    void emitPlace();

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

    Place seenPlace() const;

    // An object expands one script, so all of these start empty and none is ever reset.
    Budget& m_budget;
    std::map<std::string, Source> m_sources; // by resolved name
    std::map<std::string, Source*> m_names;  // by every name that was given
    std::deque<SourceFrame> m_frames;        // the last is being read
    // Which file includes which, down to the one that was entered last. A file that ends with an #include has
    // left m_frames when the included file is read, but is still here.
    std::vector<Source*> m_chain;
    std::map<std::string, std::string, std::less<>> m_macros;
    std::pmr::string m_output;
    std::pmr::vector<Mark> m_marks;
    bool m_placeChanged = true; // the next character needs a mark

    std::size_t m_readPosition = 0;
    std::size_t m_seen = 0; // of the output, up to and with the last character seen
};

} // namespace Zel
