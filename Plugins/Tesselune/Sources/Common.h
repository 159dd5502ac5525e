#pragma once

/**
 * Formats like printf and writes the text as one line to standard error with a single call. Cuts
 * text beyond 1023 characters. Not thread-safe: the buffer is static.
 */
void KVPrint(const char* format, ...);
