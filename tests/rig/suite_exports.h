// The exports of the suite's modules: name, number of arguments, and what each argument is: a text (t) or a
// number (n). The spies are made from this table, and the stand-ins are held to it.
#pragma once

#define KX_SYS_EXPORTS(X)       \
    X(DISPLAY, 2, "nn")         \
    X(LOGMEMORYERROR, 2, "tn")  \
    X(LOGEXCEPTION, 1, "t")     \
    X(LOGINFORMATION, 1, "t")   \
    X(SHOWINFORMATION, 2, "nt") \
    X(LOGSYSTEMERROR, 1, "t")   \
    X(SHOWSYSTEMERROR, 2, "nt") \
    X(LOGOEMMESSAGE, 1, "t")    \
    X(LOGOEMERROR, 3, "tnt")    \
    X(INQUIRE, 3, "ntn")        \
    X(LOGSERVICESTART, 1, "t")  \
    X(LOGSERVICESTOP, 1, "t")   \
    X(LOGTHREADSTART, 1, "n")   \
    X(LOGTHREADSTOP, 1, "n")    \
    X(LOGCOMWRITE, 2, "nn")     \
    X(LOGCOMREAD, 2, "nn")      \
    X(SENDEMAIL, 2, "nn")

#define KX_DB_EXPORTS(X)     \
    X(TEST_ADD, 1, "n")      \
    X(TEST_UPDATE, 1, "n")   \
    X(TEST_DELETE, 1, "n")   \
    X(TEST_FETCH, 1, "n")    \
    X(TEST_LIST, 5, "nnnnn") \
    X(PHYS_ADD, 1, "n")      \
    X(PHYS_UPDATE, 1, "n")   \
    X(PHYS_DELETE, 1, "n")   \
    X(PHYS_LIST, 3, "nnn")   \
    X(QUEUE_ADD, 1, "n")     \
    X(QUEUE_UPDATE, 1, "n")  \
    X(QUEUE_DELETE, 1, "n")  \
    X(QUEUE_LIST, 3, "nnn")  \
    X(RPT_ADD, 1, "n")       \
    X(RPT_UPDATE, 1, "n")    \
    X(RPT_DELETE, 1, "n")    \
    X(RPT_FETCH, 1, "n")     \
    X(RPT_LIST, 3, "nnn")    \
    X(CONFIG, 0, "")         \
    X(RESET, 0, "")          \
    X(CLIN_ADD, 1, "n")      \
    X(CLIN_UPDATE, 1, "n")   \
    X(CLIN_DELETE, 1, "n")   \
    X(CLIN_LIST, 2, "nn")    \
    X(TECH_ADD, 1, "n")      \
    X(TECH_UPDATE, 1, "n")   \
    X(TECH_DELETE, 1, "n")   \
    X(TECH_LIST, 2, "nn")

#define KX_RENDER_EXPORTS(X)    \
    X(RENDEROUTPUT, 5, "nnnnn") \
    X(CREATEIMAGE, 6, "nnnnnn") \
    X(CREATETEXT, 6, "tnnnnn")  \
    X(CREATEIMAGEEX, 4, "nnnn")

#define KX_INTERP_EXPORTS(X) X(INTERPRET, 6, "nnnnnn")

#define KX_ANALYZE_EXPORTS(X)  \
    X(ATTACHPIPE, 1, "n")      \
    X(TEMPLATERESET, 1, "n")   \
    X(MEASUREEPISODE, 1, "n")  \
    X(UPDATEDETECTION, 1, "n") \
    X(REMOVEPIPE, 0, "")

#define KX_NO_EXPORTS(X)
