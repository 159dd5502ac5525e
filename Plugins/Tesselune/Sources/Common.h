#pragma once

/**
 * Formats like printf and writes one line to standard error, in one piece. A text of more than 1023
 * characters is cut. Has one buffer: not for two threads at once.
 */
void KVPrint(const char* format, ...);
