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

/// The family of failures of a script's text and of queries.
class ZEL_API ScriptException : public Exception {};

/// A character or a value that is not allowed where it stands.
ZEL_DECLARE_EXCEPTION(ScriptException_SyntaxError, ScriptException, char const* fileName, int line);
/// The text ends inside a header, an assignment, a string literal or a pair of braces.
ZEL_DECLARE_EXCEPTION(ScriptException_UnexpectedEndOfFile, ScriptException, char const* fileName);
/// Braces that do not match; `characters` is "{ }".
ZEL_DECLARE_EXCEPTION(ScriptException_BracketCountMismatch, ScriptException, char const* fileName,
                      char const* characters);
/// An interval whose minimum is greater than its maximum.
ZEL_DECLARE_EXCEPTION(ScriptException_InvalidInterval, ScriptException, char const* fileName, int line,
                      char const* variable);
/// A query for a child block that is not there.
ZEL_DECLARE_EXCEPTION(ScriptException_BlockNotFound, ScriptException, char const* fileName,
                      char const* block);
/// A query for a variable of another type than it has.
ZEL_DECLARE_EXCEPTION(ScriptException_TypeMismatch, ScriptException, char const* fileName,
                      char const* variable);
/// A query for a variable that is not there.
ZEL_DECLARE_EXCEPTION(ScriptException_UndefinedVariable, ScriptException, char const* fileName,
                      char const* block, char const* variable);

/// The family of failures of directives, comments and characters.
///
/// Meant: the line is the one where reading stands, so a directive that ends in a line break is reported with
/// the line after it.
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
/// A byte from 0x80 on, other than 0xAE.
ZEL_DECLARE_EXCEPTION(ScriptPreprocessorException_InvalidCharacter, ScriptPreprocessorException,
                      int character, char const* fileName, int line);
/// An "#include" of a file that is being included already, and inside itself again: so its own errors come
/// first.
ZEL_DECLARE_EXCEPTION(ScriptPreprocessorException_IncludeLoop, ScriptPreprocessorException,
                      char const* included, char const* fileName, int line);
/// Includes and macros that make more of a few lines than any script needs: what is held or done for a script
/// and the files that it includes would pass 64 MiB and 256 times their bytes, each file counted once.
ZEL_DECLARE_EXCEPTION(ScriptPreprocessorException_TooLarge, ScriptPreprocessorException, char const* fileName,
                      int line);

/// A place in the text of a script.
struct ScriptPlace {
    std::string file; ///< as the constructor of Script, or the #include, names it
    int line = 0;     ///< from 1; 0 when the message names the file alone
};

/// The place that the message of an exception names. The exceptions above that the constructor of Script
/// throws name one; the line is 0 for ScriptException_UnexpectedEndOfFile and _BracketCountMismatch. Finds
/// none in any other exception, those of queries included, and in a message of 1023 characters, which may
/// have been cut off.
///
///     catch (Zel::Exception const& error) {
///         if (auto const place = Zel::findScriptPlace(error))
///             showInEditor(place->file, place->line);
///     }
///
/// Needs the exception as it was thrown: a copy in an Exception has lost its class, and its place with it.
ZEL_API std::optional<ScriptPlace> findScriptPlace(Exception const& exception);

/// A parsed script: a tree of blocks below an implicit block "ROOT", read through a cursor, the current
/// block. Every query looks at the current block alone: `lock` enters a child, `unlock` goes back to the
/// parent.
///
/// Copies share one tree, which lives as long as any of them, and each has a cursor of its own. References
/// that queries return are valid as long as the tree. One thread uses a Script and its copies at a time.
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

    /// One variable with its value; every field that its type does not use is zero.
    struct Variable {
        std::string name;
        VarType type = TYPE_INT;
        std::int32_t intValue = 0;
        bool boolValue = false;
        std::string text; ///< the value without blanks; for TYPE_STRING, the string
        float floatValue = 0;
        Vector2Template<float> vector2Value;
        Vector3Template<float> vector3Value;
        Vector4Template<float> vector4Value;
        IntervalTemplate<float> intervalValue;
    };

    /// Reads and parses the file and all that it includes, from the archives or the disk as File finds them;
    /// the cursor stands on ROOT. Throws ScriptException_SyntaxError, _UnexpectedEndOfFile,
    /// _BracketCountMismatch and _InvalidInterval, the preprocessor's exceptions, and those of opening and
    /// reading a File.
    Script(std::string const& fileName);
    Script(Script const& other);
    Script& operator=(Script const& other);
    virtual ~Script();

    /// The name given to the constructor.
    std::string const& getFilename() const;

    /// Enters the child of that index, from 0 in order of appearance. An index out of range ends the process.
    void lock(int index);

    /// Enters the first child of that name; throws ScriptException_BlockNotFound, and stays, when there is
    /// none.
    void lock(std::string const& name);

    /// Goes back to the parent. Pair each lock with one: above ROOT there is no block, and a query there ends
    /// the process.
    void unlock();

    /// The number of children of the current block.
    int getBlockCount() const;
    std::string const& getBlockName() const;
    bool hasBlock(std::string const& name) const;

    /// Whether the current block has a variable of that name.
    bool isDefined(std::string const& name) const;

    /// All variables of the current block in order of appearance, those of the same name included.
    std::vector<Variable> getVariables() const;

    /// The value of the first variable of that name in the current block. Types are never converted. The
    /// strict forms throw ScriptException_UndefinedVariable when there is none; the others return the default
    /// then, those for strings, vectors and intervals as a reference to the caller's object. All throw
    /// ScriptException_TypeMismatch when the variable has another type.
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

    /// Writes the blocks below the current one, with their variables as text and type number, to the verbose
    /// log, indented by two blanks a level. Meant: behind each block, one line feed goes to standard output,
    /// whatever the log's settings.
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
