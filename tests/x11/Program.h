#pragma once

#include <sys/types.h>

#include <map>
#include <string>
#include <vector>

namespace veldan {

/// Another program that a test runs, and with which it exchanges lines. The destructor ends it if it still runs.
class Program {
public:
    using Environment = std::map<std::string, std::string>;

    /// Starts it. The variables are added to the test's own, and only they can name a display. The program writes its
    /// lines to the descriptor `linesDescriptor`.
    Program(const std::vector<std::string>& command, const Environment& variables, int linesDescriptor = 1);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Waits for its next line, returned without the line end. Empty if none comes.
    [[nodiscard]] std::string Line();
    /// Everything that it writes from here to its end.
    [[nodiscard]] std::string Rest();
    /// Writes a line to its standard input.
    void SendLine(const std::string& line) const;
    /// Waits for it to end: the exit status, 128 plus the number of a signal, or -1 if it doesn't end.
    [[nodiscard]] int Finish();
    /// Ends it by a signal, if it still runs.
    void End(int signal);
    /// What it has written to the standard output and error so far, without its lines.
    [[nodiscard]] std::string StrayOutput() const;

private:
    [[nodiscard]] bool ReadSome();

    pid_t m_process = 0;
    int m_input = -1;
    int m_lines = -1;
    int m_strayOutput = -1;
    std::string m_strUnread;
};

}  // namespace veldan
