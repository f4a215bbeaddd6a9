       IDENTIFICATION DIVISION.
       PROGRAM-ID. {POLICYDB}.
       AUTHOR. KORVANE IT.
      * POLICY DATABASE ACCESS - READ AND CHECK POLICIES
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  WS-SQLCODE                   PIC S9(9) COMP.
       01  WS-PREMIUM                   PIC S9(7)V99 COMP-3.
       01  WS-LIMIT                     PIC S9(7)V99 COMP-3 VALUE 10000.
       01  WS-FLAG                      PIC X(1).
           COPY {DATEPARM}.
       LINKAGE SECTION.
           COPY {POLREC}.
       PROCEDURE DIVISION USING {POLREC}.
       0000-MAIN SECTION.
           PERFORM [>1000-READ-POLICY]
           IF [WS-SQLCODE] = ZERO
               PERFORM [>2000-CHECK-PREMIUM]
           END-IF
           GOBACK.
       1000-READ-POLICY.
           EXEC SQL
               SELECT [POLICY.PREMIUM], [POLICY.STATUS], [POLICY.SUM_INSURED]
                 INTO :[POL-PREMIUM], :[POL-STATUS], :[POL-SUM-INSURED]
                 FROM [>POLICY]
                WHERE [POLICY.POLICY_NO] = :[POL-NUMBER]
           END-EXEC
           MOVE SQLCODE TO [WS-SQLCODE].
       2000-CHECK-PREMIUM.
           MOVE [POL-PREMIUM OF {POLREC}] TO [WS-PREMIUM]
           IF [WS-PREMIUM] > [WS-LIMIT]
               MOVE 'H' TO [WS-FLAG]
           END-IF.
      *@ rules
       END PROGRAM {POLICYDB}.
