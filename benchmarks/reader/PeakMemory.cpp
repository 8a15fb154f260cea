// SPDX-License-Identifier: MIT
// Runs a command and prints its seconds and its peak of resident memory to standard error.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fputs("usage: espalier_peak_memory COMMAND [ARGUMENT]...\n", stderr);
        return EXIT_FAILURE;
    }
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0) {
        execvp(argv[1], argv + 1);
        std::perror(argv[1]);
        _exit(127);
    }
    int status = 0;
    rusage usage = {};
    if (child < 0 || wait4(child, &status, 0, &usage) != child) {
        std::perror("espalier_peak_memory");
        return EXIT_FAILURE;
    }
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    std::fprintf(stderr, "seconds %.2f\npeak_kib %ld\n", elapsed.count(), usage.ru_maxrss);
    return WIFEXITED(status) ? WEXITSTATUS(status) : EXIT_FAILURE;
}
