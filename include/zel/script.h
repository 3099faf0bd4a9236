// Scripts: configuration files of named blocks that hold typed variables.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>
#include <zel/api.h>
#include <zel/exception.h>
#include <zel/vector.h>

namespace Zel {

/// The family of failures in the text of a script and in queries.
class ZEL_API ScriptException : public Exception {};

/// A character or a value that is not allowed where it stands.
ZEL_DECLARE_EXCEPTION(ScriptException_SyntaxError, ScriptException, char const* fileName, int line);
/// The text ends inside a header, an assignment, a string literal or a pair of braces.
ZEL_DECLARE_EXCEPTION(ScriptException_UnexpectedEndOfFile, ScriptException, char const* fileName);
/// A block opens braces twice and closes them once; `characters` is "{ }". Other braces that do not match are
/// a _SyntaxError or an _UnexpectedEndOfFile.
ZEL_DECLARE_EXCEPTION(ScriptException_BracketCountMismatch, ScriptException, char const* fileName,
                      char const* characters);
/// An interval whose minimum is greater than its maximum.
ZEL_DECLARE_EXCEPTION(ScriptException_InvalidInterval, ScriptException, char const* fileName, int line,
                      char const* variable);
/// A query for a child block that is not there.
ZEL_DECLARE_EXCEPTION(ScriptException_BlockNotFound, ScriptException, char const* fileName,
                      char const* block);
/// A query for a variable by a type that it does not have.
ZEL_DECLARE_EXCEPTION(ScriptException_TypeMismatch, ScriptException, char const* fileName,
                      char const* variable);
/// A query for a variable that is not there.
ZEL_DECLARE_EXCEPTION(ScriptException_UndefinedVariable, ScriptException, char const* fileName,
                      char const* block, char const* variable);

/// The family of failures in directives, comments and characters.
///
/// Meant: a directive that fails names the place where reading goes on: mostly the line after it, at the end
/// of an included file one of the including file. The other failures name their own line.
class ZEL_API ScriptPreprocessorException : public Exception {};

/// "#include" without a file, "#define" without a name or replacement, "#undef" without a name.
ZEL_DECLARE_EXCEPTION(ScriptPreprocessorException_MissingArgument, ScriptPreprocessorException,
                      char const* directive, char const* fileName, int line);
/// A "#" followed by any other word.
ZEL_DECLARE_EXCEPTION(ScriptPreprocessorException_UnknownDirective, ScriptPreprocessorException,
                      char const* directive, char const* fileName, int line);
/// "#define" of a macro that is defined.
ZEL_DECLARE_EXCEPTION(ScriptPreprocessorException_AlreadyDefined, ScriptPreprocessorException,
                      char const* macro, char const* fileName, int line);
/// A block comment that is open where its file ends; the line is that of its opening.
ZEL_DECLARE_EXCEPTION(ScriptPreprocessorException_CommentNotTerminated, ScriptPreprocessorException, int line,
                      char const* fileName);
/// A byte of 0x80 or more, except 0xAE.
ZEL_DECLARE_EXCEPTION(ScriptPreprocessorException_InvalidCharacter, ScriptPreprocessorException,
                      int character, char const* fileName, int line);
/// An #include of a file that is open twice already. It may be open twice, so that other failures in it are
/// reported first.
ZEL_DECLARE_EXCEPTION(ScriptPreprocessorException_IncludeLoop, ScriptPreprocessorException,
                      char const* included, char const* fileName, int line);
/// Includes or macros that expand too far: a script and its includes would need more than 64 MiB plus
/// 256 times their size in memory, or as much in work (64 for each directive; for
/// each #include also 256 and the size of its file). Each file counts
/// once, however often it is included.
ZEL_DECLARE_EXCEPTION(ScriptPreprocessorException_TooLarge, ScriptPreprocessorException, char const* fileName,
                      int line);

/// A place in the text of a script.
struct ScriptPlace {
    std::string file; ///< as the constructor of Script, or the #include, names it
    int line = 0;     ///< from 1; 0 when the message names the file alone
};

/// The place that the message of an exception names: of any of the exceptions above but the three of queries.
/// The line is 0 for ScriptException_UnexpectedEndOfFile and _BracketCountMismatch. Returns nothing for all
/// other exceptions, those of files included, and for a message of 1023 characters, which may have been cut
/// off.
///
///     catch (Zel::Exception const& error) {
///         if (auto const place = Zel::findScriptPlace(error))
///             showInEditor(place->file, place->line);
///     }
///
/// Pass the exception as it was thrown: a copy of type Exception has lost its class, and the place with it.
ZEL_API std::optional<ScriptPlace> findScriptPlace(Exception const& exception);

/// A parsed script: a tree of named blocks, each with typed variables. The blocks of the text are the
/// children of an implicit block "ROOT", which has no variables. A cursor, the current block, moves through
/// the tree: `lock` enters a child, `unlock` goes back to the parent. Every query looks at the current block
/// alone.
///
///     Zel::Script script("Settings/Benchmark.script"); // ROOT is current
///     script.lock("Benchmark");
///     int const loops = script.getInt("loops", 10); // 10 when there is no "loops"
///     script.unlock(); // one for each lock
///
/// Copies share one tree, and each has a cursor of its own. The tree, and every reference into it, stays
/// valid until the last of them is destroyed. One thread at a time may use a Script and its copies.
class ZEL_API Script {
public:
    enum VarType : std::int32_t {
        TYPE_INT = 0,
        TYPE_BOOL = 1,
        TYPE_STRING = 2,
        TYPE_FLOAT = 3,
        TYPE_VECTOR2 = 4,
        TYPE_VECTOR3 = 5,
        TYPE_VECTOR4 = 6,
        TYPE_INTERVAL = 7
    };

    /// One variable with its value. The fields of other types are zero.
    struct Variable {
        std::string name;
        VarType type = TYPE_INT;
        std::int32_t intValue = 0;
        bool boolValue = false;
        std::string text; ///< for TYPE_STRING the string; for all others the value as written, without blanks
        float floatValue = 0;
        Vector2Template<float> vector2Value;
        Vector3Template<float> vector3Value;
        Vector4Template<float> vector4Value;
        IntervalTemplate<float> intervalValue;
    };

    /// Reads and parses the file and all that it includes. File finds them, in the archives or on the disk.
    /// Then ROOT is current. Throws ScriptException_SyntaxError, _UnexpectedEndOfFile, _BracketCountMismatch
    /// and _InvalidInterval, the preprocessor's exceptions, and those of opening and reading a File.
    Script(std::string const& fileName);
    Script(Script const& other);
    Script& operator=(Script const& other);
    virtual ~Script();

    /// The name given to the constructor.
    std::string const& getFilename() const;

    /// Enters a child by its index: 0 to getBlockCount() - 1, in order of appearance. Any other index ends
    /// the process.
    void lock(int index);

    /// Enters the first child of that name; case matters. When there is none, throws
    /// ScriptException_BlockNotFound, and the current block stays.
    void lock(std::string const& name);

    /// Goes back to the parent. Call it once for each lock: above ROOT there is no block, and the next query,
    /// lock or unlock ends the process.
    void unlock();

    /// The number of children of the current block.
    int getBlockCount() const;

    /// The name of the current block.
    std::string const& getBlockName() const;

    /// Whether the current block has a child of that name.
    bool hasBlock(std::string const& name) const;

    /// Whether the current block has a variable of that name.
    bool isDefined(std::string const& name) const;

    /// All variables of the current block in order of appearance, also those that share a name.
    std::vector<Variable> getVariables() const;

    /// The value of the first variable of that name in the current block. When there is none, the form with a
    /// default returns that; the other throws ScriptException_UndefinedVariable. Both throw
    /// ScriptException_TypeMismatch when the variable has another type: `x = 2;` is no float.
    ///
    /// Strings, vectors and intervals are returned by reference, and so is a default for them: the default
    /// must outlive that reference.
    ///
    ///     std::string const copy = script.getString("name", "none");  // right
    ///     std::string const& name = script.getString("name", "none"); // wrong: "none" is gone by then
    int getInt(std::string const& name) const;
    int getInt(std::string const& name, int defaultValue) const;
    bool getBool(std::string const& name) const;
    bool getBool(std::string const& name, bool defaultValue) const;
    std::string const& getString(std::string const& name) const;
    std::string const& getString(std::string const& name, std::string const& defaultValue) const;
    float getFloat(std::string const& name) const;
    float getFloat(std::string const& name, float defaultValue) const;
    Vector2Template<float> const& getVector2(std::string const& name) const;
    Vector2Template<float> const& getVector2(std::string const& name,
                                             Vector2Template<float> const& defaultValue) const;
    Vector3Template<float> const& getVector3(std::string const& name) const;
    Vector3Template<float> const& getVector3(std::string const& name,
                                             Vector3Template<float> const& defaultValue) const;
    Vector4Template<float> const& getVector4(std::string const& name) const;
    Vector4Template<float> const& getVector4(std::string const& name,
                                             Vector4Template<float> const& defaultValue) const;
    IntervalTemplate<float> const& getInterval(std::string const& name) const;
    IntervalTemplate<float> const& getInterval(std::string const& name,
                                               IntervalTemplate<float> const& defaultValue) const;

    /// Writes all blocks below the current one to the verbose log, indented by two blanks a level. Each
    /// variable is a line with its name, its text and the number of its type. Meant: after each block one
    /// line feed goes to standard output, whatever the settings of the log.
    void dump();

private:
    struct Block;
    struct StoredVariable;
    struct Tree;
    class Parser;

    Block const& current() const;
    StoredVariable const* find(std::string const& name) const;
    StoredVariable const& checked(StoredVariable const& variable, VarType type) const;
    StoredVariable const& lookup(std::string const& name, VarType type) const;
    template <VarType type>
    auto const& value(std::string const& name) const;
    template <VarType type, class Value>
    Value const& valueOr(std::string const& name, Value const& defaultValue) const;

    std::string m_fileName;
    Tree* m_tree; // counts the scripts that share it
    Block const* m_current;
};

} // namespace Zel
