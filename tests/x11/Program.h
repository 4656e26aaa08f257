#pragma once

#include <sys/types.h>

#include <map>
#include <string>
#include <vector>

namespace veldan {

/// A program of its own that a test runs, talks to and listens to. It ends with the object at the latest.
class Program {
public:
    using Environment = std::map<std::string, std::string>;

    /// Starts it. The variables are added to the test's own; there is no display but the one named by them. The program
    /// tells its lines on the descriptor `voice`.
    Program(const std::vector<std::string>& command, const Environment& variables, int voice = 1);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// The next line that it tells, without its end; waits for it. Empty where none comes.
    [[nodiscard]] std::string Line();
    /// All that it tells from here to its end.
    [[nodiscard]] std::string Rest();
    /// Writes a line to its standard input.
    void Say(const std::string& line) const;
    /// Waits for its end: the exit status, 128 and more for a signal, or -1 where it doesn't end.
    [[nodiscard]] int Finish();
    /// Ends it by a signal, if it is still there.
    void End(int signal);
    /// What it has written so far on the standard output and error, the lines that it tells apart.
    [[nodiscard]] std::string Noise() const;

private:
    [[nodiscard]] bool ReadSome();

    pid_t m_process = 0;
    int m_input = -1;
    int m_voice = -1;
    int m_noise = -1;
    std::string m_strUnread;
};

}  // namespace veldan
