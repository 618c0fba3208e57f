/*
 * sblim_utilities.h - runs command lines for an agent and hands back what they print, as lines
 *
 *     char** lines;
 *     char** line;
 *
 *     if (runcommand("ps -e", NULL, &lines, NULL) == 0)
 *         for (line = lines; *line; ++line)
 *             puts(*line);
 *     freeresultbuf(lines);
 *
 * The functions may be called from several threads at a time. They start no thread, and leave alone the
 * caller's descriptors, signal dispositions, signal masks, timers and other children.
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
 * in    Lines of its standard input, up to a null pointer; each is sent with a newline behind it. A null
 *       pointer instead of the array: the command reads /dev/null.
 * out   Receives its standard output: an array of lines without their newlines, a null pointer behind the
 *       last. What is behind the last newline is a line too, unless it is empty. A NUL byte stays in its
 *       line, which therefore looks shorter. The array is the caller's, to be released by freeresultbuf(). A
 *       null pointer instead: the output goes to /dev/null.
 * err   The same for its standard error; another variable than that of out.
 *
 * Returns the exit status of the command; 127 when the shell does not find it; 128 + the number of the signal
 * that ended it; -1 when it could not be run, or when memory ran out over its output: then *out and *err are
 * null pointers.
 *
 * The command has descriptors 0, 1 and 2 only, a process group of its own, default signal dispositions and an
 * empty signal mask. 30 seconds after its start it is ended by SIGKILL with its process group; the lines
 * until then are handed back. A process that the command leaves behind with its output still open is waited
 * for as long, and killed then, but the exit status is that of the command. It is not killed when it has left
 * the process group, or when the caller ignores SIGCHLD or collects all children itself.
 */
int runcommand(const char* cmd, char** in, char*** out, char*** err);

/*
 * Releases an array of runcommand() and its lines, in whatever order the caller has brought them. Null
 * pointer: does nothing.
 */
void freeresultbuf(char** buf);

#ifdef __cplusplus
}
#endif
#endif
