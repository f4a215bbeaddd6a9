       IDENTIFICATION DIVISION.
       PROGRAM-ID. OLDCONV.
       AUTHOR. KORVANE IT.
      * ONE-OFF CONVERSION OF THE 1998 CUSTOMER FILE - NOT IN PRODUCTION
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  OLD-RECORD.
           05  OLD-CUST-NO              PIC X(6).
           05  OLD-NAME                 PIC X(25).
           05  OLD-BAL                  PIC S9(9)V99.
       01  NEW-RECORD.
           05  NEW-CUST-ID              PIC 9(8).
           05  NEW-NAME                 PIC X(30).
           05  NEW-BALANCE              PIC S9(11)V99 COMP-3.
       01  WS-CONVERTED                 PIC 9(7) VALUE ZERO.
       PROCEDURE DIVISION.
       0000-MAIN SECTION.
           PERFORM [>1000-CONVERT]
           STOP RUN.
       1000-CONVERT.
           MOVE [OLD-CUST-NO] TO [NEW-CUST-ID]
           MOVE [OLD-NAME] TO [NEW-NAME]
           COMPUTE [NEW-BALANCE] = [OLD-BAL] * 100
           ADD 1 TO [WS-CONVERTED].
      *@ rules
       END PROGRAM OLDCONV.
