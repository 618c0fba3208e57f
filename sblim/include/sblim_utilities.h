/*
 * sblim_utilities.h - runs command lines for an agent and returns their output as lines
 *
 *     char** lines;
 *     char** line;
 *
 *     if (runcommand("ps -e", NULL, &lines, NULL) == 0)
 *         for (line = lines; *line; ++line)
 *             puts(*line);
 *     freeresultbuf(lines);
 *
 * The functions are thread-safe. They start no thread, and do not affect descriptors, signal dispositions,
 * signal masks, timers and other children of the caller.
 */
#ifndef SBLIM_UTILITIES_H
#define SBLIM_UTILITIES_H

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Runs a command line by /bin/sh, and returns when the command and its output have ended.
 *
 * cmd   The command line.
 * in    Lines of the standard input, terminated by a null pointer; a newline is added to each. If the array
 * is a null pointer, the command reads /dev/null. out   Receives the standard output: an array of lines
 * without their newlines, terminated by a null pointer. Text after the last newline is a line, too. A NUL
 * byte stays in its line, which therefore looks shorter. The caller releases the array with freeresultbuf().
 * If out is a null pointer, the output goes to /dev/null. err   The same for the standard error; must not be
 * the same pointer as out.
 *
 * Returns the exit status of the command; 127 if the shell does not find the command; 128 + N if signal N
 * ended the command; -1 if the command cannot be run, and when out of memory: then *out and *err are null
 * pointers.
 *
 * The command has only the descriptors 0, 1 and 2, its own process group, default signal dispositions and an
 * empty signal mask. After 30 seconds SIGKILL ends the process group, and the call returns the lines up to
 * then. If a background process keeps the output open, the call waits for it until the same time and then
 * kills it, but returns the exit status of the command. The process is not killed if it has left the process
 * group, or if the caller ignores SIGCHLD or collects all children.
 */
int runcommand(const char* cmd, char** in, char*** out, char*** err);

/*
 * Releases an array of runcommand() and its lines, also if the caller has reordered them. A null pointer does
 * nothing.
 */
void freeresultbuf(char** buf);

#ifdef __cplusplus
}
#endif
#endif
