// The tools' fixed paths inside the test world are links to this program: it records how it was
// called, and answers as the test has laid down, in the folder `state` beside it.

#include <algorithm>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <fstream>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

std::string stateFolder()
{
    char path[PATH_MAX];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
    if (length < 0)
        abort();
    const std::string program(path, static_cast<size_t>(length));
    return program.substr(0, program.rfind('/')) + "/state";
}

std::string baseName(const std::string& path)
{
    return path.substr(path.rfind('/') + 1);
}

bool exists(const std::string& path)
{
    return access(path.c_str(), F_OK) == 0;
}

std::string openDescriptors()
{
    std::vector<int> numbers;
    DIR* folder = opendir("/proc/self/fd");
    while (const dirent* entry = readdir(folder)) {
        if (entry->d_name[0] != '.' && atoi(entry->d_name) != dirfd(folder))
            numbers.push_back(atoi(entry->d_name));
    }
    closedir(folder);
    std::sort(numbers.begin(), numbers.end());
    std::string text;
    for (const int number : numbers)
        text += (text.empty() ? "" : " ") + std::to_string(number);
    return text;
}

// One record: the number of fields, then each field ended by NUL: path, open descriptors,
// arguments. Written at once, so that records of tools that run side by side stay whole.
void record(int argc, char** argv)
{
    std::string text = std::to_string(argc + 1) + '\0' + argv[0] + '\0' + openDescriptors() + '\0';
    for (int i = 1; i < argc; ++i)
        text += std::string(argv[i]) + '\0';
    const int calls =
        open((stateFolder() + "/calls").c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0600);
    if (write(calls, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
        abort();
    close(calls);
}

// Writes everything, or until the reader is gone.
void writeAll(int descriptor, const std::string& text)
{
    size_t done = 0;
    while (done < text.size()) {
        const ssize_t count = write(descriptor, text.data() + done, text.size() - done);
        if (count < 0)
            return;
        done += static_cast<size_t>(count);
    }
}

struct Answer {
    int exitStatus = 0;
    int signal = 0;
    bool reportsPid = false;
    std::string errors;
    std::string output;
};

// What World::answer() wrote; without a file, the answer of a tool that does nothing.
Answer readAnswer(const std::string& path)
{
    Answer answer;
    std::ifstream file(path, std::ios::binary);
    size_t errors = 0;
    file >> answer.exitStatus >> answer.signal >> answer.reportsPid >> errors;
    file.get();
    answer.errors.resize(errors);
    file.read(&answer.errors[0], static_cast<std::streamsize>(errors));
    std::ostringstream rest;
    rest << file.rdbuf();
    answer.output = rest.str();
    return answer;
}

std::string answerPath(int argc, char** argv)
{
    const std::string answers = stateFolder() + "/answers/";
    const std::string tool = baseName(argv[0]);
    if (argc > 1 && exists(answers + tool + ' ' + baseName(argv[1])))
        return answers + tool + ' ' + baseName(argv[1]);
    return answers + tool;
}

} // namespace

int main(int argc, char** argv)
{
    const std::string path = answerPath(argc, argv);
    const Answer answer = readAnswer(path);
    // Only now: a test that has seen the record may lay down the answer for the next run. That must
    // not be a held one, which would hold this run, too.
    record(argc, argv);
    if (answer.reportsPid) {
        const pid_t pid = getpid();
        writeAll(STDOUT_FILENO, std::string(reinterpret_cast<const char*>(&pid), sizeof pid));
    }
    writeAll(STDERR_FILENO, answer.errors);
    writeAll(STDOUT_FILENO, answer.output);
    // A held tool also ends with its caller, as a test that was killed releases nothing.
    const pid_t caller = getppid();
    while (exists(path + ".held") && getppid() == caller)
        usleep(1000);
    if (answer.signal != 0)
        raise(answer.signal);
    return answer.exitStatus;
}
