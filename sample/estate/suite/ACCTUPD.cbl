       IDENTIFICATION DIVISION.
       PROGRAM-ID. {ACCTUPD}.
       AUTHOR. KORVANE IT.
      * NIGHTLY ACCOUNT UPDATE - BATCH
       ENVIRONMENT DIVISION.
       INPUT-OUTPUT SECTION.
       FILE-CONTROL.
           SELECT CUSTMAST ASSIGN TO CUSTMAST
               ORGANIZATION IS INDEXED ACCESS MODE IS SEQUENTIAL
               RECORD KEY IS CM-CUST-ID.
       DATA DIVISION.
       FILE SECTION.
      *@ object CUSTMAST | VSAM Dataset | Dataset
       FD  CUSTMAST.
       01  CM-RECORD.
           05  CM-CUST-ID               PIC 9(8).
           05  CM-DATA                  PIC X(192).
      *@ end object
       WORKING-STORAGE SECTION.
       01  WS-EOF                       PIC X(1) VALUE 'N'.
       01  WS-COUNTERS.
           05  WS-READ-COUNT            PIC 9(7) COMP-3.
           05  WS-UPDATE-COUNT          PIC 9(7) COMP-3.
           05  WS-TODAY                 PIC 9(8).
           05  WS-LILIAN                PIC S9(9) COMP.
       01  WS-SAVED-CUST.
           05  CUST-STATUS              PIC X(1).
           05  CUST-NAME                PIC X(30).
           COPY {CUSTREC}.
           COPY {DATEPARM}.
      *@ object SQLCA | SQL Communication Area | ObjectInFileAlt
      *@ end object
           EXEC SQL INCLUDE [>SQLCA] END-EXEC.
       PROCEDURE DIVISION.
       0000-MAIN SECTION.
           PERFORM [>1000-INIT]
           PERFORM [>2000-READ-NEXT] UNTIL [WS-EOF] = 'Y'
           PERFORM [>9000-TERMINATE]
           GOBACK.
       1000-INIT.
           OPEN INPUT [>CUSTMAST]
           MOVE ZERO TO [WS-READ-COUNT] [WS-UPDATE-COUNT]
           ACCEPT [WS-TODAY] FROM DATE YYYYMMDD
           CALL [>'DATECONV'] USING [&WS-TODAY] [&WS-LILIAN].
       2000-READ-NEXT.
           READ [>CUSTMAST] INTO [{CUSTREC}]
               AT END MOVE 'Y' TO [WS-EOF]
               NOT AT END PERFORM [>2100-APPLY-UPDATE]
           END-READ.
       2100-APPLY-UPDATE.
           ADD 1 TO [WS-READ-COUNT]
           IF [CUST-STATUS IN WS-SAVED-CUST] = 'C'
               DISPLAY 'CLOSED: ' [CUST-NAME IN WS-SAVED-CUST]
           END-IF
           MOVE [{CUSTREC}] TO [WS-SAVED-CUST]
           CALL [>'{ACCT}'] USING [&{CUSTREC}]
           MOVE [CUST-OPEN-DATE OF {CUSTREC}] TO [DP-DATE-IN]
           CALL [>'{DATEUTIL}'] USING [&DATE-PARMS]
           ADD 1 TO [WS-UPDATE-COUNT].
       9000-TERMINATE.
           CLOSE [>CUSTMAST]
           DISPLAY 'RECORDS READ:    ' [WS-READ-COUNT]
           DISPLAY 'RECORDS UPDATED: ' [WS-UPDATE-COUNT].
      *@ rules
       END PROGRAM {ACCTUPD}.
