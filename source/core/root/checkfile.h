// The mark that start-up has come past its modules.
#pragma once

/// Writes "init done!" to "/var/tmp/vemo.check", for whoever supports the installed application.
/// The folder is everyone's: what stands there and is no plain file of one name is left alone.
/// Without an answer, since start-up goes on either way.
void writeCheckFile();
