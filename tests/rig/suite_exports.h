// The exports of the suite's modules that the product calls: name, number of arguments, and what each argument is: a text (t)
// or a number (n). The spies are made from this table, and the stand-ins are held to it.
#pragma once

#define KX_SYS_EXPORTS(X)       \
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
    X(LOGSERVICESTOP, 1, "t")

#define KX_DB_EXPORTS(X)     \
    X(TEST_ADD, 1, "n")      \
    X(TEST_UPDATE, 1, "n")   \
    X(TEST_DELETE, 1, "n")   \
    X(TEST_FETCH, 1, "n")    \
    X(TEST_LIST, 5, "nnnnn") \
    X(PHYS_LIST, 3, "nnn")   \
    X(TECH_LIST, 2, "nn")

#define KX_RENDER_EXPORTS(X) X(CREATETEXT, 6, "tnnnnn")

#define KX_INTERP_EXPORTS(X) X(INTERPRET, 6, "nnnnnn")

#define KX_ANALYZE_EXPORTS(X) \
    X(MEASUREEPISODE, 1, "n") \
    X(UPDATEDETECTION, 1, "n")
