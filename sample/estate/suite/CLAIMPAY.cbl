       IDENTIFICATION DIVISION.
       PROGRAM-ID. {CLAIMPAY}.
       AUTHOR. KORVANE IT.
      * CLAIM PAYMENT SCHEDULE - INSTALMENTS AND RE-REGISTRATION
       DATA DIVISION.
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
       PROCEDURE DIVISION USING CLAIM-AREA.
       0000-MAIN SECTION.
           PERFORM [>1000-SCHEDULE]
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
           ADD 1 TO [WS-INDEX]
           IF [WS-INDEX] NOT > [CA-INSTALMENTS]
               PERFORM [>1100-SUM-INSTALMENTS]
           END-IF
           MOVE [WS-TOTAL] TO [WS-PAID].
      *@ rules
       END PROGRAM {CLAIMPAY}.
