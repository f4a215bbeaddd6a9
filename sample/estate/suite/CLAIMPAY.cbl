       IDENTIFICATION DIVISION.
       PROGRAM-ID. {CLAIMPAY}.
       AUTHOR. KORVANE IT.
      * CLAIM PAYMENT SCHEDULE - INSTALMENTS AND RE-REGISTRATION
       ENVIRONMENT DIVISION.
       INPUT-OUTPUT SECTION.
       FILE-CONTROL.
           SELECT {CLMINST} ASSIGN TO CLMINST
               ORGANIZATION IS SEQUENTIAL.
       DATA DIVISION.
       FILE SECTION.
      *@ object {CLMINST} | Sequential Dataset | Dataset
       FD  {CLMINST}.
       01  INSTALMENT-RECORD.
           05  IR-CLAIM-NO              PIC 9(10).
           05  IR-INSTALMENT-NO         PIC 9(2).
           05  IR-AMOUNT                PIC S9(9)V99 COMP-3.
           05  IR-RESERVE               PIC S9(11)V99 COMP-3.
      *@ end object
       WORKING-STORAGE SECTION.
       01  WS-INSTALMENT                PIC S9(9)V99 COMP-3.
       01  WS-PAID                      PIC S9(11)V99 COMP-3.
       01  WS-TOTAL                     PIC S9(11)V99 COMP-3.
       01  WS-INDEX                     PIC 9(2).
       01  WS-STATUS                    PIC X(1).
           COPY {DATEPARM}.
       LINKAGE SECTION.
       01  CLAIM-AREA.
           05  CA-CLAIM-NO              PIC 9(10).
           05  CA-POLICY-NO             PIC X(12).
           05  CA-LOSS-DATE             PIC 9(8).
           05  CA-AMOUNT                PIC S9(11)V99 COMP-3.
           05  CA-STATUS                PIC X(1).
           05  CA-INSTALMENTS           PIC 9(2).
       01  CLAIM-RESERVE                PIC S9(11)V99 COMP-3.
       PROCEDURE DIVISION USING CLAIM-AREA CLAIM-RESERVE.
       0000-MAIN SECTION.
           OPEN OUTPUT [>{CLMINST}]
           PERFORM [>1000-SCHEDULE]
           CLOSE [>{CLMINST}]
           IF [CA-STATUS] = 'R'
               CALL [>'{CLAIMREG}'] USING [&CLAIM-AREA]
           END-IF
           GOBACK.
       1000-SCHEDULE.
           MOVE ZERO TO [WS-TOTAL]
           MOVE 1 TO [WS-INDEX]
           COMPUTE [WS-INSTALMENT] ROUNDED = [CA-AMOUNT] / [CA-INSTALMENTS]
           PERFORM [>1100-SUM-INSTALMENTS].
       1100-SUM-INSTALMENTS.
           ADD [WS-INSTALMENT] TO [WS-TOTAL]
           MOVE [CA-CLAIM-NO] TO [IR-CLAIM-NO OF {CLMINST}]
           MOVE [WS-INDEX] TO [IR-INSTALMENT-NO OF {CLMINST}]
           MOVE [WS-INSTALMENT] TO [IR-AMOUNT OF {CLMINST}]
           MOVE [CLAIM-RESERVE] TO [IR-RESERVE OF {CLMINST}]
           WRITE [INSTALMENT-RECORD]
           ADD 1 TO [WS-INDEX]
           IF [WS-INDEX] NOT > [CA-INSTALMENTS]
               PERFORM [>1100-SUM-INSTALMENTS]
           END-IF
           MOVE [WS-TOTAL] TO [WS-PAID].
      *@ rules
       END PROGRAM {CLAIMPAY}.
