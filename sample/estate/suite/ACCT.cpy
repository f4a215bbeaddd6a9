      * ACCOUNT RECORD LAYOUT FOR {ACCT}
       01  ACCT-LAYOUT.
           05  ACCT-NO                  PIC X(10).
           05  ACCT-TYPE                PIC X(2).
           05  ACCT-INTEREST            PIC S9(7)V99 COMP-3.
           05  ACCT-LIMIT               PIC S9(11)V99 COMP-3.
